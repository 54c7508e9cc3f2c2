// How far an update got, according to the folders on the flash disk.
#pragma once

#include <filesystem>

// Where the last update stopped, in the order of an update.
enum class UpdateStep {
    None,                 // no staging folder: no update in progress
    Copying,              // the installation is in place, the new one is being staged
    ApplicationMoved,     // KSTRL has become KSTRL_old, and nothing is in its place
    ApplicationReplaced,  // the new KSTRL is in place, ORBUI is the installed one
    GuiDataMoved,         // ORBUI has become ORBUI_old, and nothing is in its place
    BothReplaced,         // both are in place, but the empty staging folder still exists
    GuiDataOnly,          // ORBUI was replaced, but KSTRL could not be
    Unclear,              // not a state that a single interrupted update leaves
};

struct UpdateStepText {
    const char* name;      // stable, for scripts: "application-moved"
    const char* happened;  // a sentence: what the update was doing
    const char* onDisk;    // a phrase: what the disk contains now
};
const UpdateStepText& textOf(UpdateStep step);

// Which folders of an update exist below the maker's folder.
struct DiskState {
    bool application = false;        // KSTRL
    bool applicationBackup = false;  // KSTRL_old
    bool guiData = false;            // ORBUI
    bool guiDataBackup = false;      // ORBUI_old
    bool staging = false;            // Update
    bool stagedApplication =
        false;                   // Update/KSTRL, with a file in it or with Update/ORBUI beside it
    bool stagedGuiData = false;  // Update/ORBUI
    std::size_t strayFiles = 0;  // in Update, but in neither of these folders
};

// Throws std::runtime_error when a folder cannot be read.
DiskState readDiskState(const std::filesystem::path& makerFolder);
UpdateStep stepOf(const DiskState& state);
