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
