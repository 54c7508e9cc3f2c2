#include "tools/diagnosis/diagnosis.h"

#include <algorithm>
#include <set>
#include <stdexcept>

#include "tools/diagnosis/advice.h"
#include "tools/diagnosis/installation.h"
#include "tools/host/folder_tree.h"
#include "tools/host/host_file.h"

namespace fs = std::filesystem;

namespace {

// The codes of findings with which the application cannot be started.
const std::set<std::string> HINDRANCES = {"no-application-folder", "no-application",
                                          "application-damaged",   "application-machine",
                                          "no-gui-folder",         "gui-data-empty"};

FolderFinding lookAt(const fs::path& folder) {
    FolderFinding found;
    found.name = folder.filename().generic_string();
    found.there = fs::is_directory(folder);
    if (!found.there)
        return found;
    for (const auto& [path, file] : filesIn(folder)) {
        ++found.files;
        found.bytes += file.size;
    }
    found.version = applicationVersion(folder);
    return found;
}

void checkFolders(const fs::path& makerFolder, const DiskState& state, Findings& findings) {
    for (const std::string& name : UPDATE_FOLDERS) {
        const fs::path entry = entryAt(makerFolder, name);
        if (fs::exists(entry) && !fs::is_directory(entry))
            addFinding(findings, "not-a-folder", entry.filename().generic_string(),
                       "is a file; the update needs a folder of this name");
    }
    const fs::path program =
        entryAt(makerFolder, fs::path(keylayout::APPLICATION) / keylayout::PROGRAM);
    const std::string name = fs::path(program).lexically_relative(makerFolder).generic_string();
    if (!state.application)
        addFinding(findings, "no-application-folder", keylayout::APPLICATION,
                   "there is no such folder");
    else if (!fs::is_regular_file(program))
        addFinding(findings, "no-application", name, "is missing");
    else if (fs::file_size(program) == 0)
        addFinding(findings, "application-damaged", name, "is empty");
    if (!state.guiData)
        addFinding(findings, "no-gui-folder", keylayout::GUI, "there is no such folder");
    else if (readTree(entryAt(makerFolder, keylayout::GUI_DATA)).empty())
        addFinding(findings, "gui-data-empty", keylayout::GUI_DATA, "is missing or empty");
    if (state.strayFiles != 0)
        addFinding(findings, "stray-files", keylayout::STAGING,
                   "contains files or folders that no update puts there (" +
                       std::to_string(state.strayFiles) +
                       "); while they are there, every update fails");
}

void checkLog(const Diagnosis& diagnosis, const DiskState& state, Findings& findings) {
    const LogReading& log = diagnosis.log;
    const auto contradict = [&](const char* text) {
        addFinding(findings, "log-contradicts", keylayout::LOG, text);
    };
    const bool succeeded = log.outcome == LogOutcome::Succeeded;
    if (succeeded && state.staging)
        contradict(
            "says that an update succeeded, but the folder Update exists: another update was "
            "started or files were added afterwards, or the disk has become read-only, so that "
            "this is the log of an earlier update");
    if (succeeded && (!state.application || !state.guiData))
        contradict("says that an update succeeded, but a folder that it installed is missing");
    if (log.outcome == LogOutcome::NoLog && state.staging)
        contradict("does not exist, although the folder Update does");
    const std::size_t lines = log.earlier + log.lines.size();
    if (log.foreign != 0)
        addFinding(findings, "log-odd", keylayout::LOG,
                   std::to_string(log.foreign) + " of its " + std::to_string(lines) +
                       " lines are not the updater's; it may be the log of another program");
    if (log.notCopied != 0)
        addFinding(findings, "files-not-copied", keylayout::LOG,
                   "reports that files were not copied (" + std::to_string(log.notCopied) +
                       "): the disk was full, or the key was faulty or was pulled out");
}

// While an update copies its files, they need room beside all folders that exist already.
void checkSpace(const Diagnosis& diagnosis, const FileSet& key,
                const std::optional<fs::space_info>& disk, Findings& findings) {
    uint64_t onKey = 0;
    for (const auto& [path, file] : key)
        onKey += file.size;
    uint64_t present = 0;
    for (const FolderFinding& folder : diagnosis.folders)
        present += folder.bytes;
    const uint64_t staged = diagnosis.folders.back().bytes;
    // Without the key, the larger one of the installed and the previous version stands for it.
    const uint64_t needed = key.empty()
                                ? std::max(diagnosis.folders[0].bytes + diagnosis.folders[2].bytes,
                                           diagnosis.folders[1].bytes + diagnosis.folders[3].bytes)
                                : onKey;
    const bool full = disk && disk->available + staged < needed;
    if (!full && diagnosis.log.notCopied == 0)
        return;
    const std::string has = disk ? "has " + std::to_string(disk->available) + " of " +
                                       std::to_string(disk->capacity) + " bytes free"
                                 : "holds folders of " + std::to_string(present) + " bytes";
    addFinding(findings, full ? "disk-full" : "disk-space", "",
               "the flash disk " + has + "; an update needs " + std::to_string(needed) +
                   " bytes beside what is installed");
}

}  // namespace

const char* nameOf(Advice::Action action) {
    constexpr const char* NAMES[] = {"save",         "remove", "rename",
                                     "update-again", "start",  "check-disk"};
    return NAMES[static_cast<std::size_t>(action)];
}

bool Diagnosis::sound() const {
    return advice.size() == 1 && advice.front().action == Advice::Action::Start && findings.empty();
}

Diagnosis diagnose(const fs::path& device, const DiagnoseOptions& options) {
    const fs::path makerFolder = makerFolderOf(device);
    if (isOnKey(makerFolder))
        throw std::runtime_error(device.generic_string() +
                                 " is an update key and not the flash disk of an instrument; "
                                 "examine it with updatekey check");
    Diagnosis diagnosis;
    for (const std::string& name : UPDATE_FOLDERS)
        diagnosis.folders.push_back(lookAt(entryAt(makerFolder, name)));
    const DiskState state = readDiskState(makerFolder);
    diagnosis.step = stepOf(state);
    const fs::path log = entryAt(makerFolder, keylayout::LOG);
    if (fs::exists(log))
        diagnosis.log = readLog(readHostFile(log.generic_string()));
    const FileSet key = options.key ? installedFiles(makerFolderOf(*options.key)) : FileSet();
    if (options.key)
        diagnosis.changes = compareFiles(key, installedFiles(makerFolder));

    checkFolders(makerFolder, state, diagnosis.findings);
    checkLog(diagnosis, state, diagnosis.findings);
    checkSpace(diagnosis, key, options.disk, diagnosis.findings);
    if (options.check)
        for (const Finding& finding : options.check(makerFolder))
            diagnosis.findings.push_back(finding);
    for (const Finding& finding : diagnosis.findings)
        if (HINDRANCES.count(finding.code) != 0)
            diagnosis.hindrances.push_back(finding.path + ": " + finding.text);
    advise(diagnosis, state);
    return diagnosis;
}
