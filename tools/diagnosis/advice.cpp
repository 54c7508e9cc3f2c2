#include "tools/diagnosis/advice.h"

#include <algorithm>
#include <set>

#include "tools/diagnosis/installation.h"

namespace {

using Action = Advice::Action;

// Collects the advice for one diagnosis, in the order in which it must be followed.
class Adviser {
  public:
    Adviser(Diagnosis& diagnosis, const DiskState& state)
        : diagnosis_(diagnosis),
          state_(state),
          applicationLost_(!state.application && state.applicationBackup),
          guiDataLost_(!state.guiData && state.guiDataBackup) {}

    void advise() {
        const bool update = mustUpdate();
        checkDisk();
        saveOnlyCopies();
        if (update)
            savePreviousVersion();
        removeWhatIsInTheWay();
        bringBack(applicationLost_, APPLICATION_BACKUP, keylayout::APPLICATION, "application");
        bringBack(guiDataLost_, GUI_BACKUP, keylayout::GUI, "GUI data");
        removeStaging();
        if (update)
            updateAgain();
        else
            add(Action::Start, "", "", "Start the instrument; nothing else is needed.");
    }

  private:
    bool mustUpdate() const {
        return hasErrors(diagnosis_.findings) || diagnosis_.step != UpdateStep::None ||
               (diagnosis_.changes && !diagnosis_.changes->empty()) ||
               diagnosis_.log.outcome == LogOutcome::Failed;
    }

    // After a power cut on FAT, two folders can share their clusters.
    void checkDisk() {
        if (state_.staging || applicationLost_ || guiDataLost_)
            add(Action::CheckDisk, "", "",
                "If the flash disk is FAT, check its file system first (fsck.vfat -a, twice, or "
                "chkdsk /f), and diagnose it again: two folders can share their clusters, and "
                "deleting one would damage the other.");
    }

    void saveOnlyCopies() {
        const bool lastApplication =
            !state_.application && !state_.applicationBackup && state_.stagedApplication;
        const bool lastGuiData = !state_.guiData && !state_.guiDataBackup && state_.stagedGuiData;
        saveOnlyCopy(applicationLost_, APPLICATION_BACKUP);
        saveOnlyCopy(guiDataLost_, GUI_BACKUP);
        saveOnlyCopy(lastApplication || lastGuiData, keylayout::STAGING);
    }

    void saveOnlyCopy(bool isOnly, const std::string& name) {
        if (!isOnly)
            return;
        FolderFinding& folder = find(name);
        folder.onlyCopy = true;
        add(Action::Save, folder.name, "",
            "Copy " + folder.name + " to another disk first: it is the only copy of its files.");
    }

    // When the installed files are not what they should be, the backups are the last good version,
    // which the next update deletes.
    void savePreviousVersion() {
        const bool untouched =
            diagnosis_.step == UpdateStep::Copying ||
            (diagnosis_.step == UpdateStep::None && diagnosis_.log.outcome == LogOutcome::NoUpdate);
        const bool differs = diagnosis_.changes && !diagnosis_.changes->empty();
        if (!hasErrors(diagnosis_.findings) && (untouched || !differs))
            return;
        for (const std::string& name : {APPLICATION_BACKUP, GUI_BACKUP}) {
            const FolderFinding& folder = find(name);
            if (folder.there && !folder.onlyCopy)
                add(Action::Save, folder.name, "",
                    "Copy " + folder.name +
                        " to another disk first: it is the previous version, and the next update "
                        "deletes it.");
        }
    }

    // What the updater can neither replace nor delete makes every later update fail.
    void removeWhatIsInTheWay() {
        static const std::set<std::string> CODES = {"not-a-folder", "not-a-file", "name-not-fat",
                                                    "name-not-latin1"};
        for (const Finding& finding : diagnosis_.findings)
            if (CODES.count(finding.code) != 0)
                add(Action::Remove, finding.path, "",
                    "Delete " + finding.path +
                        ": the updater cannot, and every update fails because of it.");
    }

    void bringBack(bool lost, const std::string& backup, const std::string& name,
                   const std::string& what) {
        if (lost)
            add(Action::Rename, find(backup).name, name,
                "Rename " + find(backup).name + " to " + name + ": this restores the previous " +
                    what + ".");
    }

    void removeStaging() {
        if (state_.staging)
            add(Action::Remove, find(keylayout::STAGING).name, "",
                "Delete the folder " + find(keylayout::STAGING).name +
                    ": the next update would install its files together with the key's.");
    }

    void updateAgain() {
        const bool noGuiData = !state_.guiData && !state_.guiDataBackup;
        add(Action::UpdateAgain, "", "",
            std::string(
                "Update again, with the same key if it has no errors, or with a newer one.") +
                (noGuiData ? " Without GUI data the first update ends with \"Update failed\", "
                             "although it installs everything: update a second time."
                           : ""));
    }

    FolderFinding& find(const std::string& name) {
        const auto at = std::find(UPDATE_FOLDERS.begin(), UPDATE_FOLDERS.end(), name);
        return diagnosis_.folders[static_cast<std::size_t>(at - UPDATE_FOLDERS.begin())];
    }

    void add(Action action, const std::string& folder, const std::string& to,
             const std::string& text) {
        diagnosis_.advice.push_back({action, folder, to, text});
    }

    Diagnosis& diagnosis_;
    const DiskState& state_;
    const bool applicationLost_;  // moved away, and not replaced
    const bool guiDataLost_;
};

}  // namespace

void advise(Diagnosis& diagnosis, const DiskState& state) {
    Adviser(diagnosis, state).advise();
}
