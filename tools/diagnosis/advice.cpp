#include "tools/diagnosis/advice.h"

#include <set>

#include "update/key_layout.h"

namespace {

using Action = Advice::Action;

// The findings of what the updater can neither replace nor delete.
const std::set<std::string> OBSTACLES = {"not-a-folder", "not-a-file", "name-not-fat",
                                         "name-not-latin1"};

bool needsUpdate(const Diagnosis& diagnosis) {
    return hasErrors(diagnosis.findings) || diagnosis.step != UpdateStep::None ||
           (diagnosis.changes && !diagnosis.changes->empty()) ||
           diagnosis.log.outcome == LogOutcome::Failed;
}

// Whether the installed files are not what they should be, so that the backups are the last good
// version.
bool isInstallationBad(const Diagnosis& diagnosis) {
    const bool untouched =
        diagnosis.step == UpdateStep::Copying ||
        (diagnosis.step == UpdateStep::None && diagnosis.log.outcome == LogOutcome::NoUpdate);
    const bool differs = diagnosis.changes && !diagnosis.changes->empty();
    return hasErrors(diagnosis.findings) || (differs && !untouched);
}

}  // namespace

void advise(Diagnosis& diagnosis, const DiskState& state) {
    const auto add = [&](bool isNeeded, Action action, const std::string& folder,
                         const std::string& to, const std::string& text) {
        if (isNeeded)
            diagnosis.advice.push_back({action, folder, to, text});
    };
    const std::string& oldApplication = diagnosis.folders[1].name;
    const std::string& oldGuiData = diagnosis.folders[3].name;
    const std::string& staging = diagnosis.folders[4].name;
    // Moved away, and not replaced.
    const bool applicationLost = !state.application && state.applicationBackup;
    const bool guiDataLost = !state.guiData && state.guiDataBackup;
    const bool isUpdateNeeded = needsUpdate(diagnosis);

    // After a power cut on FAT, two folders can share their clusters.
    add(state.staging || applicationLost || guiDataLost, Action::CheckDisk, "", "",
        "If the flash disk is FAT, check its file system first (fsck.vfat -a, twice, or chkdsk "
        "/f), and diagnose it again: two folders can share their clusters, and deleting one would "
        "damage the other.");

    diagnosis.folders[1].onlyCopy = applicationLost;
    diagnosis.folders[3].onlyCopy = guiDataLost;
    diagnosis.folders[4].onlyCopy =
        (!state.application && !state.applicationBackup && state.stagedApplication) ||
        (!state.guiData && !state.guiDataBackup && state.stagedGuiData);
    for (const FolderFinding& folder : diagnosis.folders)
        add(folder.onlyCopy, Action::Save, folder.name, "",
            "Copy " + folder.name + " to another disk first: it is the only copy of its files.");
    for (const FolderFinding* const backup : {&diagnosis.folders[1], &diagnosis.folders[3]})
        add(isUpdateNeeded && isInstallationBad(diagnosis) && backup->there && !backup->onlyCopy,
            Action::Save, backup->name, "",
            "Copy " + backup->name +
                " to another disk first: it is the previous version, and the next update deletes "
                "it.");

    for (const Finding& finding : diagnosis.findings)
        add(OBSTACLES.count(finding.code) != 0, Action::Remove, finding.path, "",
            "Delete " + finding.path +
                ": the updater cannot, and every update fails because of it.");
    add(applicationLost, Action::Rename, oldApplication, keylayout::APPLICATION,
        "Rename " + oldApplication + " to " + keylayout::APPLICATION +
            ": this restores the previous application.");
    add(guiDataLost, Action::Rename, oldGuiData, keylayout::GUI,
        "Rename " + oldGuiData + " to " + keylayout::GUI +
            ": this restores the previous GUI data.");
    add(state.staging, Action::Remove, staging, "",
        "Delete the folder " + staging +
            ": the next update would install its files together with the key's.");

    const bool noGuiData = !state.guiData && !state.guiDataBackup;
    add(isUpdateNeeded, Action::UpdateAgain, "", "",
        std::string("Update again, with the same key if it has no errors, or with a newer one.") +
            (noGuiData ? " Without GUI data the first update ends with \"Update failed\", although "
                         "it installs everything: update a second time."
                       : ""));
    add(!isUpdateNeeded, Action::Start, "", "", "Start the instrument; nothing else is needed.");
}
