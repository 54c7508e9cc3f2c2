#include "tests/faults/checks.h"

#include <algorithm>

#include "tests/faults/device_states.h"

namespace {

bool has(const Tree& folder, const std::string& name, const std::string& bytes) {
    const auto entry = folder.find(name);
    return entry != folder.end() && entry->second == bytes;
}

bool hasAll(const Tree& folder, const Tree& wanted) {
    return std::all_of(wanted.begin(), wanted.end(),
                       [&](const auto& entry) { return has(folder, entry.first, entry.second); });
}

// Everything that no update may change.
Tree bystanders(Tree tree) {
    for (auto entry = tree.begin(); entry != tree.end();) {
        bool replaced = entry->first == LOG_FILE || entry->first.rfind(STAGING, 0) == 0;
        for (const std::string& component : COMPONENTS)
            for (const char* const suffix : {"/", "_old/"})
                replaced |= entry->first.rfind(INSTALLATION + component + suffix, 0) == 0;
        entry = replaced ? tree.erase(entry) : std::next(entry);
    }
    return tree;
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

void checkLog(const UpdateRun& run, const Tree& now, Remarks& remarks) {
    const auto file = now.find(LOG_FILE);
    const std::string log = file != now.end() ? file->second : "";
    const std::string failure = "\n    *** ERROR *** Update failed.\n\n";
    const bool saysComplete = log.find("  ** Warning ** Update succeeded at ") != std::string::npos;
    const bool isComplete = run.end == "complete" || (run.end == "killed" && isUpdated(now));
    if (saysComplete && !isComplete)
        remarks.push_back(wrong("not complete, but the log says so"));
    if (run.end == "complete" && (!saysComplete || log.find(failure) != std::string::npos))
        remarks.push_back(wrong("complete, but the log does not say so"));
    if (run.end == "failed" && !endsWith(log, failure))
        remarks.push_back(wrong("failed, but the log does not end so"));
    if (!holdsInOrder(log, run.loggedLines))
        remarks.push_back(wrong("a logged line is not on the disk"));
}

}  // namespace

void checkNothingLost(const Tree& original, const Tree& now, Remarks& remarks) {
    for (const std::string& component : COMPONENTS) {
        const std::string live = INSTALLATION + component + "/";
        const std::string backup = INSTALLATION + component + "_old/";
        const bool wasMissing = below(original, live).empty();
        const Tree installed = below(original, wasMissing ? backup : live);
        const bool kept = below(now, live) == installed || below(now, backup) == installed;
        if (!kept && !hasAll(below(now, live), filesOfKey(now, component)))
            remarks.push_back(wasMissing ? known("the backup is the last copy")
                                         : wrong(component + " is lost"));
    }
}

void checkInPlaceIsWhole(const Tree& original, const Tree& now, Remarks& remarks) {
    for (const std::string& component : COMPONENTS) {
        const std::string folder = INSTALLATION + component + "/";
        const Tree live = below(now, folder);
        const bool isOld = live.empty() || live == below(original, folder);
        if (!isOld && !hasAll(live, filesOfKey(now, component)))
            remarks.push_back(wrong(component + " is incomplete"));
    }
}

void checkCleanRun(const UpdateRun& run, const Tree& before, const Tree& after,
                   const std::set<std::string>& readOnly, Remarks& remarks) {
    for (const std::string& component : COMPONENTS) {
        const Tree live = below(after, INSTALLATION + component + "/");
        const Tree wanted = filesOfKey(after, component);
        const Tree staged = below(before, STAGING + component + "/");
        for (const auto& [name, bytes] : wanted) {
            if (has(live, name, bytes))
                continue;
            const bool isKnown =
                readOnly.count(component + "/" + name) != 0 && has(live, name, staged.at(name));
            remarks.push_back(isKnown ? known("a staged file is read-only")
                                      : wrong(name + " is not that of the key"));
        }
        for (const auto& [name, bytes] : live)
            if (wanted.count(name) == 0)
                remarks.push_back(has(staged, name, bytes) ? known("a stray staged file")
                                                           : wrong(name + " is not on the key"));
    }
    if (run.end == "failed" && below(before, INSTALLATION + "ORBUI/").empty())
        remarks.push_back(known("missing GUI data fails"));
    else if (run.end != "complete")
        remarks.push_back(wrong("a later run ended " + run.end));
}

void checkAnyRun(const UpdateRun& run, const Tree& before, const Tree& now, Remarks& remarks) {
    checkLog(run, now, remarks);
    if (run.wroteOutside)
        remarks.push_back(wrong("a call outside VELD"));
    if (bystanders(before) != bystanders(now))
        remarks.push_back(wrong("an unrelated file changed"));
    if (run.end != "killed" && !run.hadWayOut)
        remarks.push_back(wrong(run.end + ", and STOP did not exit"));
}
