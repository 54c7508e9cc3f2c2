// The paths of a key's folders and files, relative to the key, and those of a device folder,
// relative to it, without a separator at their end.
#pragma once

#include <string>

#include "update/key_layout.h"

namespace keypaths {

inline std::string withoutSeparator(std::string folder) {
    folder.pop_back();
    return folder;
}

inline const std::string MAKER = withoutSeparator(keylayout::MAKER_FOLDER);
// The name of the update's folder while it is written to a stick. The device ignores it.
inline const std::string UNFINISHED = MAKER + ".unfinished";
inline const std::string NOTES = MAKER + "/" + keylayout::RELEASE_NOTES;
inline const std::string APPLICATION = MAKER + "/" + keylayout::APPLICATION;
inline const std::string PROGRAM = APPLICATION + "/" + keylayout::PROGRAM;
inline const std::string GUI = MAKER + "/" + keylayout::GUI;
inline const std::string GUI_DATA = MAKER + "/" + withoutSeparator(keylayout::GUI_DATA);

// The folder of a device folder that stands for a root of the device: "FlashDisk", "USB HD".
inline std::string deviceFolder(const std::string& root) {
    return root.substr(1, root.find('/', 1) - 1);
}

inline const std::string FLASH_DISK = deviceFolder(keylayout::FLASH_ROOT);
inline const std::string STORAGE = deviceFolder(keylayout::USB_ROOT);

}  // namespace keypaths
