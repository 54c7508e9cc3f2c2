// The devices on which an update is struck by a fault, and the keys that they are updated from.
#pragma once

#include <string>
#include <vector>

#include "tests/helpers/device_folder.h"

enum class StartState {
    Plain,
    NoBackup,
    ApplicationMissing,  // its backup is the only copy, as after a power cut between the two moves
    GuiDataMissing,      // the same for the GUI data
    LeftoverStaging,     // of an interrupted update from the same key
    ReadOnlyFiles,
    GuiDataLocked,  // while the faulty run lasts
};

struct NamedState {
    StartState state;
    const char* name;
};
extern const std::vector<NamedState> START_STATES;

// The folders of the installation that an update replaces.
extern const std::vector<std::string> COMPONENTS;

const std::string INSTALLATION = "FlashDisk/VELD/";
const std::string STAGING = INSTALLATION + "Update/";
const std::string LOG_FILE = INSTALLATION + "Updater-log.txt";

// Lays out the device in `state`, with the first key plugged in.
void makeDevice(const DeviceFolder& device, StartState state);

// Plugs in a newer key, which lacks some of the first one's files and has others.
void plugInNewerKey(const DeviceFolder& device);

// The part of `tree` below `folder` (ending in "/"), with names relative to it.
Tree below(const Tree& tree, const std::string& folder);

// What is installed as `component` after an update from the key in `tree`.
Tree filesOfKey(const Tree& tree, const std::string& component);
