#include "tests/faults/fault_case.h"

#include <sys/stat.h>

#include <algorithm>
#include <optional>

namespace {

std::set<std::string> readOnlyStagedFiles(const DeviceFolder& device) {
    std::set<std::string> names;
    for (const auto& entry : device.tree(STAGING)) {
        struct stat status {};
        const std::string path = (device.root() / (STAGING + entry.first)).string();
        if (::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
            (status.st_mode & S_IWUSR) == 0)
            names.insert(entry.first);
    }
    return names;
}

CleanRun runWithoutFault(const DeviceFolder& device) {
    CleanRun clean;
    clean.before = device.tree();
    clean.readOnlyBefore = readOnlyStagedFiles(device);
    clean.run = runUpdate(device, {});
    clean.after = device.tree();
    return clean;
}

void checkAnyRun(const UpdateRun& run, const Fault& fault, const Tree& before, const Tree& after,
                 Violations& findings) {
    checkLog(run, after, findings);
    checkNothingElseTouched(run, before, after, findings);
    checkWayOut(run, fault, findings);
}

void describeStruckRun(const Tree& after, CaseResult& result) {
    std::size_t replaced = 0;
    for (const std::string& component : COMPONENTS) {
        const std::string live = INSTALLATION + component + "/";
        if (below(after, live) == filesOfKey(after, component))
            ++replaced;
    }
    result.unnoticed = result.first == RunEnd::Complete && replaced < COMPONENTS.size();
    result.mixed = result.first != RunEnd::Complete && replaced == 1;
    result.noApplication = after.count(INSTALLATION + "KSTRL/KSTRL.exe") == 0;
}

void add(const Violations& findings, CaseResult& result) {
    std::string notes;
    for (const Violation& finding : findings) {
        const auto invariant = static_cast<std::size_t>(finding.invariant);
        result.violations[invariant] = 1;
        if (finding.weakness)
            result.weaknesses[static_cast<std::size_t>(*finding.weakness)] = true;
        else
            result.unexplained[invariant] = 1;
        notes += "; I" + std::to_string(invariant + 1) + " " +
                 (finding.weakness ? nameOf(*finding.weakness) : "UNEXPLAINED") + ": " +
                 finding.what;
    }
    notes.resize(std::min(notes.size(), result.notes.size() - 1));
    std::copy(notes.begin(), notes.end(), result.notes.begin());
}

}  // namespace

CaseResult runCase(const FaultCase& faultCase) {
    CaseResult result;
    Violations findings;
    const DeviceFolder device;
    makeDevice(device, faultCase.state);
    const Tree original = device.tree();

    const bool locked = faultCase.state == StartState::GuiDataLocked;
    const UpdateRun struck = runUpdate(device, {faultCase.fault, locked});
    const Tree left = device.tree();
    result.first = struck.end;
    describeStruckRun(left, result);
    checkNothingLost(original, left, findings);
    if (struck.end == RunEnd::Killed)
        checkInPlaceIsWhole(original, left, findings);
    result.kept = findings.empty();
    checkAnyRun(struck, faultCase.fault, original, left, findings);

    if (faultCase.newerKeyLater)
        plugInNewerKey(device);
    result.advice = followAdvice(device);
    const CleanRun second = runWithoutFault(device);
    result.second = second.run.end;
    if (second.run.end == RunEnd::Complete)
        checkNothingLost(original, second.after, findings);
    checkLaterRun(second, findings);
    checkAnyRun(second.run, {}, second.before, second.after, findings);

    // When the second run does not repair the device, the third one must.
    if (!second.run.hadWayOut || second.run.end != RunEnd::Complete) {
        const CleanRun third = runWithoutFault(device);
        checkLaterRun(third, findings);
        checkAnyRun(third.run, {}, third.before, third.after, findings);
        if (third.run.end != RunEnd::Complete)
            findings.push_back({Invariant::LaterRunSucceeds, std::nullopt, "the third run failed"});
    }
    add(findings, result);
    result.done = true;
    return result;
}

std::vector<std::string> callsOfAWholeRun(StartState state) {
    const DeviceFolder device;
    makeDevice(device, state);
    return runUpdate(device, {{}, state == StartState::GuiDataLocked}).calls;
}
