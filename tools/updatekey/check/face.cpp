#include "tools/updatekey/check/face.h"

#include <algorithm>
#include <cstdio>

#include "platform/utf.h"
#include "tools/updatekey/check/key_paths.h"

FontData loadKeyFace(const std::string& faceName) {
    const std::string path = keylayout::USB_ROOT + keypaths::GUI_DATA + "/fonts/" + faceName;
    FontData face;
    loadFontFile(path + ".fnt", face);
    loadKerningFile(path + ".kern", face);
    return face;
}

std::string listCharacters(const std::set<WCHAR>& characters) {
    constexpr std::size_t SHOWN = 8;
    std::string list;
    std::size_t count = 0;
    for (const WCHAR code : characters) {
        if (count++ == SHOWN)
            return list + ", and " + std::to_string(characters.size() - SHOWN) + " more";
        char number[16];
        std::snprintf(number, sizeof number, "U+%04X", static_cast<unsigned>(code));
        const bool printable = code > 0x20 && !(code >= 0x7F && code < 0xA0);
        list += list.empty() ? "" : ", ";
        list += printable ? "\"" + host::toUtf8({&code, 1}) + "\" (" + number + ")" : number;
    }
    return list;
}
