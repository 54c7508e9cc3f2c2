#include "tests/faults/advice.h"

#include <algorithm>

#include "platform/posix/files/device.h"
#include "tests/faults/device_states.h"
#include "tools/diagnosis/diagnosis.h"

namespace fs = std::filesystem;

namespace {

void follow(const Advice& advice, const DeviceFolder& device) {
    const fs::path maker = device.root() / INSTALLATION;
    if (advice.action == Advice::Action::Remove)
        fs::remove_all(maker / advice.folder);
    else if (advice.action == Advice::Action::Rename)
        fs::rename(maker / advice.folder, maker / advice.to);
    // Without GUI data the first run ends as failed, as the advice says.
    else if (advice.action == Advice::Action::UpdateAgain && runUpdate(device).end != "complete")
        runUpdate(device);
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
    return agrees && diagnosis.hindrances.empty() == starts &&
           diagnosis.changes->empty() == isUpdated(disk);
}

}  // namespace

void followAdvice(const DeviceFolder& instrument, Remarks& remarks) {
    {
        const DeviceFolder copy;
        fs::copy(instrument.root(), copy.root(), fs::copy_options::recursive);
        DiagnoseOptions options;
        options.key = copy.root() / "USB HD";
        const Diagnosis diagnosis = diagnose(copy.root(), options);
        const std::string step = textOf(diagnosis.step).name;
        remarks.push_back(step);
        if (!agreesWithDisk(diagnosis, copy.tree()))
            remarks.push_back(wrong("the diagnosis"));
        for (const Advice& advice : diagnosis.advice) {
            remarks.push_back(step + ": " + nameOf(advice.action));
            follow(advice, copy);
        }
        if (!isUpdated(copy.tree()))
            remarks.push_back(wrong("the advice does not repair the instrument"));
    }
    setDeviceRoot(instrument.root().string());
}
