#include "tools/diagnosis/diagnosis.h"

#include "platform/posix/files/read_file.h"
#include "tools/diagnosis/installation.h"
#include "tools/host/folder_tree.h"
#include "update/key_layout.h"

namespace fs = std::filesystem;

namespace {

using Action = Advice::Action;

FolderFinding lookAt(const fs::path& makerFolder, const std::string& name) {
    FolderFinding folder;
    folder.name = name;
    folder.there = fs::is_directory(makerFolder / name);
    folder.version = applicationVersion(makerFolder / name);
    for (const TreeEntry& entry : readTree(makerFolder / name)) {
        folder.files += entry.kind == TreeEntry::Kind::File ? 1U : 0U;
        folder.bytes += entry.size;
    }
    return folder;
}

KeyComparison compareWith(const fs::path& key, const fs::path& makerFolder) {
    KeyComparison comparison;
    std::vector<std::string>* const lists[] = {&comparison.tooMany, &comparison.different,
                                               &comparison.missing};
    for (const FileChange& change :
         compareFiles(installedFiles(makerFolderOf(key)), installedFiles(makerFolder)))
        lists[static_cast<std::size_t>(change.kind)]->push_back(change.path);
    return comparison;
}

// Collects the advice for one diagnosis, in the order in which it must be followed.
class Adviser {
  public:
    Adviser(Diagnosis& diagnosis, const DiskState& state, const fs::path& makerFolder)
        : diagnosis_(diagnosis), state_(state), folder_(makerFolder) {}

    void advise() {
        const bool applicationThere = runs(state_.application ? "KSTRL" : "KSTRL_old");
        const bool guiDataThere = state_.guiData || state_.guiDataBackup;
        bringBack("KSTRL", state_.application, state_.applicationBackup, "application");
        bringBack("ORBUI", state_.guiData, state_.guiDataBackup, "GUI data");
        if (state_.application && !applicationThere && runs("KSTRL_old"))
            save("KSTRL_old");
        if (state_.staging)
            removeStaging();
        diagnosis_.startsAsItIs = runs("KSTRL") && state_.guiData;
        const bool foundWrong = diagnosis_.comparison && !diagnosis_.comparison->same();
        const bool finished = diagnosis_.step == UpdateStep::None;
        if (!applicationThere || !guiDataThere || !finished || foundWrong ||
            diagnosis_.log.outcome == LogOutcome::Failed)
            updateAgain();
        else
            add(Action::Start, "", "", "Start the instrument; nothing else is needed.");
    }

  private:
    bool runs(const std::string& folder) const {
        std::error_code error;
        return fs::file_size(folder_ / folder / keylayout::PROGRAM, error) > 0 && !error;
    }

    void add(Action action, const std::string& folder, const std::string& to,
             const std::string& text) {
        diagnosis_.advice.push_back({action, folder, to, text});
    }

    void save(const std::string& name) {
        for (FolderFinding& folder : diagnosis_.folders)
            folder.onlyCopy |= folder.name == name;
        add(Action::Save, name, "",
            "Copy " + name + " to another disk first: it is the only copy of its files.");
    }

    void bringBack(const std::string& name, bool there, bool backupThere, const std::string& what) {
        const std::string backup = name + keylayout::BACKUP_SUFFIX;
        if (there || !backupThere)
            return;
        save(backup);
        add(Action::Rename, backup, name,
            "Rename " + backup + " to " + name + ": this restores the previous " + what + ".");
    }

    void removeStaging() {
        if (!state_.application && !state_.applicationBackup && state_.stagedApplication)
            save("Update");
        add(Action::Remove, "Update", "",
            "Delete the folder Update: the next update would install its files together with the "
            "key's.");
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

    Diagnosis& diagnosis_;
    const DiskState& state_;
    const fs::path& folder_;
};

void compareLogAndDisk(Diagnosis& diagnosis, const DiskState& state) {
    const auto contradict = [&](const char* text) { diagnosis.contradictions.emplace_back(text); };
    const bool succeeded = diagnosis.log.outcome == LogOutcome::Succeeded;
    if (succeeded && state.staging)
        contradict(
            "The log says that an update succeeded, but the folder Update exists: another update "
            "was started, or files were added, afterwards.");
    if (succeeded && (!state.application || !state.guiData))
        contradict(
            "The log says that an update succeeded, but a folder that it installed is missing.");
    if (diagnosis.log.outcome == LogOutcome::NoLog && state.staging)
        contradict("The folder Update exists, but there is no log of an update.");
}

}  // namespace

const char* nameOf(Advice::Action action) {
    constexpr const char* NAMES[] = {"save", "remove", "rename", "update-again", "start"};
    return NAMES[static_cast<std::size_t>(action)];
}

bool Diagnosis::sound() const {
    return advice.size() == 1 && advice.front().action == Action::Start && contradictions.empty();
}

Diagnosis diagnose(const fs::path& device, const std::optional<fs::path>& key) {
    const fs::path makerFolder = makerFolderOf(device);
    Diagnosis diagnosis;
    for (const char* const name : UPDATE_FOLDERS)
        diagnosis.folders.push_back(lookAt(makerFolder, name));
    const DiskState state = readDiskState(makerFolder);
    diagnosis.step = stepOf(state);
    diagnosis.log = readLog(host::readFile(makerFolder / keylayout::LOG));
    if (key)
        diagnosis.comparison = compareWith(*key, makerFolder);
    compareLogAndDisk(diagnosis, state);
    Adviser(diagnosis, state, makerFolder).advise();
    return diagnosis;
}
