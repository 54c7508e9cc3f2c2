#include "tools/diagnosis/disk_state.h"

#include "tools/diagnosis/installation.h"
#include "tools/host/folder_tree.h"

namespace fs = std::filesystem;

const UpdateStepText& textOf(UpdateStep step) {
    static const UpdateStepText TEXTS[] = {
        {"none", "No update is in progress.", "the installation is in place"},
        {"copying", "The update stopped before it changed the installation.",
         "the unchanged installation, and a part of the new version in Update"},
        {"application-moved", "The update stopped while it replaced the application.",
         "no application in place; the previous one is in KSTRL_old"},
        {"application-replaced", "The update stopped between the application and the GUI data.",
         "the new application with the old GUI data"},
        {"gui-data-moved", "The update stopped while it replaced the GUI data.",
         "the new application without GUI data; the previous ones are in ORBUI_old"},
        {"both-replaced", "The update had just started, or was almost complete.",
         "a complete version, the old or the new one, and an empty folder Update"},
        {"gui-data-only", "The update replaced the GUI data but not the application.",
         "the old application with the new GUI data"},
        {"unclear", "A single interrupted update cannot leave these folders.",
         "see the list of folders"},
    };
    return TEXTS[static_cast<std::size_t>(step)];
}

DiskState readDiskState(const fs::path& makerFolder) {
    const auto there = [](const fs::path& folder, const std::string& name) {
        return fs::is_directory(entryAt(folder, name));
    };
    const fs::path staging = entryAt(makerFolder, keylayout::STAGING);
    DiskState state;
    state.application = there(makerFolder, keylayout::APPLICATION);
    state.applicationBackup = there(makerFolder, APPLICATION_BACKUP);
    state.guiData = there(makerFolder, keylayout::GUI);
    state.guiDataBackup = there(makerFolder, GUI_BACKUP);
    state.staging = fs::is_directory(staging);
    state.stagedGuiData = there(staging, keylayout::GUI);
    // The update creates all folders before it copies the first file: an empty Update/KSTRL without
    // Update/ORBUI means that nothing is staged yet.
    const fs::path staged = entryAt(staging, keylayout::APPLICATION);
    state.stagedApplication =
        fs::is_directory(staged) && (state.stagedGuiData || !fs::is_empty(staged));
    for (const TreeEntry& entry : readTree(staging))
        state.strayFiles += !startsWith(entry.path, staged.filename().generic_string()) &&
                                    !startsWith(entry.path, keylayout::GUI)
                                ? 1U
                                : 0U;
    return state;
}

UpdateStep stepOf(const DiskState& state) {
    const bool bothInPlace = state.application && state.guiData;
    if (!state.staging)
        return bothInPlace ? UpdateStep::None : UpdateStep::Unclear;
    if (state.stagedApplication && state.guiData && !state.application)
        return state.applicationBackup ? UpdateStep::ApplicationMoved : UpdateStep::Unclear;
    if (!state.application)
        return UpdateStep::Unclear;
    if (state.stagedApplication && state.guiData)
        return state.stagedGuiData ? UpdateStep::Copying : UpdateStep::GuiDataOnly;
    if (state.stagedGuiData && state.guiData)
        return UpdateStep::ApplicationReplaced;
    if (state.stagedGuiData && state.guiDataBackup)
        return UpdateStep::GuiDataMoved;
    return bothInPlace && state.strayFiles == 0 ? UpdateStep::BothReplaced : UpdateStep::Unclear;
}
