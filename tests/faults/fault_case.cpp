#include "tests/faults/fault_case.h"

#include <algorithm>

#include "tests/faults/advice.h"

namespace {

// Runs the updater without a fault. Returns how it ended.
std::string runCleanly(const DeviceFolder& device, Remarks& remarks) {
    namespace fs = std::filesystem;
    const Tree before = device.tree();
    std::set<std::string> readOnly;
    for (const auto& [name, bytes] : device.tree(STAGING)) {
        const fs::perms mode = fs::status(device.root() / (STAGING + name)).permissions();
        if ((mode & fs::perms::owner_write) == fs::perms::none)
            readOnly.insert(name);
    }
    const UpdateRun run = runUpdate(device);
    const Tree after = device.tree();
    checkCleanRun(run, before, after, readOnly, remarks);
    checkAnyRun(run, before, after, remarks);
    return run.end;
}

void describe(const UpdateRun& struck, const Tree& left, Remarks& remarks) {
    remarks.push_back(struck.end);
    const auto replaced =
        std::count_if(COMPONENTS.begin(), COMPONENTS.end(), [&](const std::string& component) {
            return below(left, INSTALLATION + component + "/") == filesOfKey(left, component);
        });
    if (struck.end == "complete" && replaced < 2)
        remarks.emplace_back("unnoticed");
    if (struck.end != "complete" && replaced == 1)
        remarks.emplace_back("mixed");
    if (left.count(INSTALLATION + "KSTRL/KSTRL.exe") == 0)
        remarks.emplace_back("no application");
}

}  // namespace

Remarks runCase(const FaultCase& faultCase) {
    Remarks remarks;
    const DeviceFolder device;
    makeDevice(device, faultCase.start);
    const Tree original = device.tree();

    const UpdateRun struck = runUpdate(device, faultCase.fault, faultCase.start == "locked");
    const Tree left = device.tree();
    describe(struck, left, remarks);
    checkNothingLost(original, left, remarks);
    if (struck.end == "killed")
        checkInPlaceIsWhole(original, left, remarks);
    if (struck.end == "killed" && faultCase.fault.kind == Fault::Kind::Fail)
        remarks.push_back(wrong("killed by a call that fails"));
    checkAnyRun(struck, original, left, remarks);

    if (faultCase.newerKeyLater)
        plugInNewerKey(device);
    followAdvice(device, remarks);
    if (runCleanly(device, remarks) == "complete") {
        checkNothingLost(original, device.tree(), remarks);
    } else {
        remarks.emplace_back("a later run failed");
        // When the second run does not repair the device, the third one must.
        if (runCleanly(device, remarks) != "complete")
            remarks.push_back(wrong("the third run failed"));
    }
    return remarks;
}
