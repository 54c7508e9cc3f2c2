// The names of the folders and files of an update key and of the flash disk, for the engine and for
// the tools that make and check keys. They are literals: they exist before any object is
// constructed, and only once in memory.
#pragma once

namespace keylayout {

// Paths on the device: the root of the storage device, and the folder of the installation.
constexpr const char* USB_ROOT = "/USB HD/";
constexpr const char* FLASH_ROOT = "/FlashDisk/VELD/";

// Below the root of the storage device.
constexpr const char* MAKER_FOLDER = "VELD/";

// Below the maker's folder. The folders are also below the folder of the installation.
constexpr const char* RELEASE_NOTES = "kstrXReleaseNotes.txt";
constexpr const char* APPLICATION = "KSTRL";
constexpr const char* PROGRAM = "KSTRL.exe";  // in the application's folder
constexpr const char* GUI = "ORBUI";
constexpr const char* GUI_DATA = "ORBUI/data/";

// Precedes the version in the first line of the release notes.
constexpr const char* VERSION_PREFIX = "KSTRL Release ";

// Below the folder of the installation: the staging folder of an update, and the log of the last
// run.
constexpr const char* STAGING = "Update";
constexpr const char* LOG = "Updater-log.txt";

// Appended to the name of a replaced folder.
constexpr const char* BACKUP_SUFFIX = "_old";

}  // namespace keylayout
