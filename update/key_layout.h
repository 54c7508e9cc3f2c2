// The names by which an update key and the flash disk are laid out. The engine goes by them, and
// the tools that make and check keys. Plain literals, which are there before any object is made and
// take room once.
#pragma once

namespace keylayout {

// Device paths: the root of the storage device, and that of the installation.
constexpr const char* USB_ROOT = "/USB HD/";
constexpr const char* FLASH_ROOT = "/FlashDisk/VELD/";

// Below the root of the storage device.
constexpr const char* MAKER_FOLDER = "VELD/";

// Below the maker's folder; the folders are below the root of the installation, too.
constexpr const char* RELEASE_NOTES = "kstrXReleaseNotes.txt";
constexpr const char* APPLICATION = "KSTRL";
constexpr const char* GUI = "ORBUI";
constexpr const char* GUI_DATA = "ORBUI/data/";

// In front of the version, in the first line of the release notes.
constexpr const char* VERSION_PREFIX = "KSTRL Release ";

// Below the root of the installation: where an update gathers its files.
constexpr const char* STAGING = "Update";

}  // namespace keylayout
