#include "tests/faults/advice.h"

#include <algorithm>

#include "platform/posix/files/device.h"
#include "tests/faults/device_states.h"
#include "tests/faults/update_run.h"

namespace fs = std::filesystem;

namespace {

// Without GUI data the first run ends as failed, as the advice says.
void updateAgain(const DeviceFolder& device) {
    for (int run = 0; run < 2; ++run)
        if (runUpdate(device, {}).end == RunEnd::Complete)
            return;
}

void follow(const Advice& advice, const DeviceFolder& device) {
    const fs::path maker = device.root() / INSTALLATION;
    switch (advice.action) {
        case Advice::Action::Remove:
            fs::remove_all(maker / advice.folder);
            break;
        case Advice::Action::Rename:
            fs::rename(maker / advice.folder, maker / advice.to);
            break;
        case Advice::Action::UpdateAgain:
            updateAgain(device);
            break;
        default:
            break;
    }
}

// Whether the diagnosis tells what is on the disk, as the test itself reads it.
bool agreesWithDisk(const Diagnosis& diagnosis, const Tree& disk) {
    bool agrees = true;
    for (const FolderFinding& folder : diagnosis.folders) {
        const Tree content = below(disk, INSTALLATION + folder.name + "/");
        const auto files = std::count_if(content.begin(), content.end(), [](const auto& entry) {
            return entry.first.back() != '/';
        });
        agrees &= folder.there == (disk.count(INSTALLATION + folder.name + "/") != 0) &&
                  folder.files == static_cast<std::size_t>(files);
    }
    const auto program = disk.find(INSTALLATION + "KSTRL/KSTRL.exe");
    const bool starts = program != disk.end() && !program->second.empty() &&
                        !below(disk, INSTALLATION + "ORBUI/data/").empty();
    const bool same = std::all_of(COMPONENTS.begin(), COMPONENTS.end(), [&](const auto& name) {
        return below(disk, INSTALLATION + name + "/") == filesOfKey(disk, name);
    });
    return agrees && diagnosis.hindrances.empty() == starts && diagnosis.changes->empty() == same;
}

}  // namespace

AdviceOutcome followAdvice(const DeviceFolder& instrument) {
    AdviceOutcome outcome;
    {
        const DeviceFolder copy;
        fs::copy(instrument.root(), copy.root(), fs::copy_options::recursive);
        DiagnoseOptions options;
        options.key = copy.root() / "USB HD";
        const Diagnosis diagnosis = diagnose(copy.root(), options);
        outcome.step = diagnosis.step;
        outcome.agrees = agreesWithDisk(diagnosis, copy.tree());
        for (const Advice& advice : diagnosis.advice) {
            outcome.actions[static_cast<std::size_t>(advice.action)] = true;
            follow(advice, copy);
        }
        const Tree after = copy.tree();
        outcome.cured = std::all_of(COMPONENTS.begin(), COMPONENTS.end(), [&](const auto& name) {
            return below(after, INSTALLATION + name + "/") == filesOfKey(after, name);
        });
    }
    setDeviceRoot(instrument.root().string());
    return outcome;
}
