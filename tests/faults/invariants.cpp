#include "tests/faults/invariants.h"

#include <algorithm>

#include "tests/faults/device_states.h"

namespace {

bool holdsAll(const Tree& folder, const Tree& wanted) {
    return std::all_of(wanted.begin(), wanted.end(), [&](const auto& entry) {
        const auto present = folder.find(entry.first);
        return present != folder.end() && present->second == entry.second;
    });
}

bool isReplaced(const std::string& path) {
    if (path == LOG_FILE || path.compare(0, STAGING.size(), STAGING) == 0)
        return true;
    return std::any_of(COMPONENTS.begin(), COMPONENTS.end(), [&](const std::string& component) {
        const std::string live = INSTALLATION + component;
        return path.compare(0, live.size() + 1, live + "/") == 0 ||
               path.compare(0, live.size() + 5, live + "_old/") == 0;
    });
}

Tree bystanders(const Tree& tree) {
    Tree result;
    for (const auto& entry : tree) {
        if (!isReplaced(entry.first))
            result.insert(entry);
    }
    return result;
}

// Finds differences between the installed folder and the key's, and the weakness that explains
// each.
void checkLiveFiles(const CleanRun& clean, const std::string& component, Violations& findings) {
    const Tree live = below(clean.after, INSTALLATION + component + "/");
    const Tree wanted = filesOfKey(clean.after, component);
    const Tree staged = below(clean.before, STAGING + component + "/");
    const auto isStagedAs = [&](const std::string& name, const std::string& bytes) {
        const auto entry = staged.find(name);
        return entry != staged.end() && entry->second == bytes;
    };
    for (const auto& [name, bytes] : wanted) {
        const auto present = live.find(name);
        if (present != live.end() && present->second == bytes)
            continue;
        std::optional<Weakness> weakness;
        const bool stale = present != live.end() && isStagedAs(name, present->second);
        if (stale && clean.readOnlyBefore.count(component + "/" + name) != 0)
            weakness = Weakness::StagedFileIsReadOnly;
        findings.push_back({Invariant::LaterRunSucceeds, weakness, component + "/" + name});
    }
    for (const auto& [name, bytes] : live) {
        if (wanted.count(name) != 0)
            continue;
        std::optional<Weakness> weakness;
        if (isStagedAs(name, bytes))
            weakness = Weakness::StrayStagedFile;
        findings.push_back({Invariant::LaterRunSucceeds, weakness, component + "/" + name});
    }
}

bool endsWith(const std::string& text, const std::string& end) {
    return text.size() >= end.size() &&
           text.compare(text.size() - end.size(), end.size(), end) == 0;
}

bool holdsInOrder(const std::string& text, const std::vector<std::string>& lines) {
    std::size_t at = 0;
    for (const std::string& line : lines) {
        at = text.find("** " + line + "\n", at);
        if (at == std::string::npos)
            return false;
        at += line.size();
    }
    return true;
}

}  // namespace

const char* nameOf(Weakness weakness) {
    static const char* const NAMES[] = {"backup is the last copy", "missing GUI data fails",
                                        "stray staged file", "staged file is read-only"};
    return NAMES[static_cast<std::size_t>(weakness)];
}

void checkNothingLost(const Tree& original, const Tree& now, Violations& findings) {
    for (const std::string& component : COMPONENTS) {
        const std::string live = INSTALLATION + component + "/";
        const std::string backup = INSTALLATION + component + "_old/";
        Tree installed = below(original, live);
        std::optional<Weakness> weakness;
        if (installed.empty()) {
            installed = below(original, backup);
            weakness = Weakness::BackupIsTheLastCopy;
        }
        const bool kept = below(now, live) == installed || below(now, backup) == installed;
        if (!kept && !holdsAll(below(now, live), filesOfKey(now, component)))
            findings.push_back({Invariant::NothingLost, weakness, component});
    }
}

void checkInPlaceIsWhole(const Tree& original, const Tree& now, Violations& findings) {
    for (const std::string& component : COMPONENTS) {
        const std::string folder = INSTALLATION + component + "/";
        const Tree live = below(now, folder);
        const bool isOld = live.empty() || live == below(original, folder);
        if (!isOld && !holdsAll(live, filesOfKey(now, component)))
            findings.push_back(
                {Invariant::NothingLost, std::nullopt, component + " is incomplete"});
    }
}

void checkLaterRun(const CleanRun& clean, Violations& findings) {
    for (const std::string& component : COMPONENTS)
        checkLiveFiles(clean, component, findings);
    if (clean.run.end == RunEnd::Complete)
        return;
    std::optional<Weakness> weakness;
    const bool wasMissing = below(clean.before, INSTALLATION + "ORBUI/").empty();
    if (clean.run.end == RunEnd::Failed && wasMissing)
        weakness = Weakness::MissingGuiDataFails;
    findings.push_back({Invariant::LaterRunSucceeds, weakness,
                        std::string("a later run ended ") + nameOf(clean.run.end)});
}

void checkLog(const UpdateRun& run, const Tree& now, Violations& findings) {
    const auto file = now.find(LOG_FILE);
    const std::string log = file != now.end() ? file->second : "";
    const std::string failure = "\n    *** ERROR *** Update failed.\n\n";
    const bool saysComplete = log.find("  ** Warning ** Update succeeded at ") != std::string::npos;
    const auto report = [&](const char* what) {
        findings.push_back({Invariant::LogTellsTheTruth, std::nullopt, what});
    };
    if (run.end == RunEnd::Complete && (!saysComplete || log.find(failure) != std::string::npos))
        report("complete, but the log does not say so");
    if (run.end != RunEnd::Complete && run.end != RunEnd::Killed && saysComplete)
        report("not complete, but the log says so");
    if (run.end == RunEnd::Failed && !endsWith(log, failure))
        report("failed, but the log does not end so");
    const bool replaced = std::all_of(COMPONENTS.begin(), COMPONENTS.end(), [&](const auto& name) {
        return below(now, INSTALLATION + name + "/") == filesOfKey(now, name);
    });
    if (run.end == RunEnd::Killed && saysComplete && !replaced)
        report("the log says complete, but the disk does not");
    if (!holdsInOrder(log, run.loggedLines))
        report("a logged line is not on the disk");
}

void checkNothingElseTouched(const UpdateRun& run, const Tree& before, const Tree& now,
                             Violations& findings) {
    if (run.wroteOutside)
        findings.push_back({Invariant::NothingElseTouched, std::nullopt, "a call outside VELD"});
    if (bystanders(before) != bystanders(now))
        findings.push_back(
            {Invariant::NothingElseTouched, std::nullopt, "an unrelated file changed"});
}

void checkWayOut(const UpdateRun& run, const Fault& fault, Violations& findings) {
    const bool mayDie = fault.kind != FaultKind::None && fault.kind != FaultKind::Fail;
    if (run.end == RunEnd::Killed ? mayDie : run.hadWayOut)
        return;
    findings.push_back({Invariant::AlwaysAWayOut, std::nullopt,
                        std::string(nameOf(run.end)) + ", and STOP did not exit"});
}
