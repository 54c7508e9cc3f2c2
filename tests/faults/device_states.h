// The starting states of a device, and the keys that update it.
#pragma once

#include <string>
#include <vector>

#include "tests/helpers/device_folder.h"

// Of "no KSTRL" and "no ORBUI" only the backup exists, as after a power cut between the two moves.
// In "leftover" an interrupted update from the same key has left something in the staging folder,
// and in "locked" ORBUI cannot be moved during the faulty run.
const std::vector<std::string> START_STATES = {"plain",    "no backup", "no KSTRL", "no ORBUI",
                                               "leftover", "read-only", "locked"};

// The folders that an update replaces.
const std::vector<std::string> COMPONENTS = {"KSTRL", "ORBUI"};

const std::string INSTALLATION = "FlashDisk/VELD/";
const std::string STAGING = INSTALLATION + "Update/";
const std::string LOG_FILE = INSTALLATION + "Updater-log.txt";

// Creates the device in `state`, with the first key plugged in.
void makeDevice(const DeviceFolder& device, const std::string& state);

// Plugs in a newer key, which lacks some files of the first key and adds others.
void plugInNewerKey(const DeviceFolder& device);

// Returns the part of `tree` below `folder` (ending in "/"), with names relative to it.
Tree below(const Tree& tree, const std::string& folder);

// Returns the files of `component` after an update from the key in `tree`.
Tree filesOfKey(const Tree& tree, const std::string& component);

// Whether exactly the files of the key in `tree` are installed.
bool isUpdated(const Tree& tree);
