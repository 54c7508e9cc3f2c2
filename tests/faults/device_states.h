// The starting states of a device, and the keys that update it.
#pragma once

#include <string>
#include <vector>

#include "tests/helpers/device_folder.h"

enum class StartState {
    Plain,
    NoBackup,
    ApplicationMissing,  // only its backup exists: power cut between the two moves
    GuiDataMissing,      // the same for the GUI data
    LeftoverStaging,     // left by an interrupted update from the same key
    ReadOnlyFiles,
    GuiDataLocked,  // ORBUI cannot be moved during the faulty run
};

struct NamedState {
    StartState state;
    const char* name;
};
extern const std::vector<NamedState> START_STATES;

// The folders that an update replaces.
extern const std::vector<std::string> COMPONENTS;

const std::string INSTALLATION = "FlashDisk/VELD/";
const std::string STAGING = INSTALLATION + "Update/";
const std::string LOG_FILE = INSTALLATION + "Updater-log.txt";

// Creates the device in `state`, with the first key plugged in.
void makeDevice(const DeviceFolder& device, StartState state);

// Plugs in a newer key, which lacks some files of the first key and adds others.
void plugInNewerKey(const DeviceFolder& device);

// Returns the part of `tree` below `folder` (ending in "/"), with names relative to it.
Tree below(const Tree& tree, const std::string& folder);

// Returns the files of `component` after an update from the key in `tree`.
Tree filesOfKey(const Tree& tree, const std::string& component);

// Whether exactly the files of the key in `tree` are installed.
bool isUpdated(const Tree& tree);
