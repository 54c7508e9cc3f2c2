// The names by which an update key and the flash disk are laid out. The engine goes by them, and
// the tools that make and check keys.
#pragma once

#include <string>

namespace keylayout {

// Device paths: the root of the storage device, and that of the installation.
inline const std::string USB_ROOT = "/USB HD/";
inline const std::string FLASH_ROOT = "/FlashDisk/VELD/";

// Below the root of the storage device.
inline const std::string MAKER_FOLDER = "VELD/";

// Below the maker's folder; the folders are below the root of the installation, too.
inline const std::string RELEASE_NOTES = "kstrXReleaseNotes.txt";
inline const std::string APPLICATION = "KSTRL";
inline const std::string GUI = "ORBUI";
inline const std::string GUI_DATA = GUI + "/data/";

// In front of the version, in the first line of the release notes.
inline const std::string VERSION_PREFIX = "KSTRL Release ";

// Below the root of the installation: where an update gathers its files.
inline const std::string STAGING = "Update";

}  // namespace keylayout
