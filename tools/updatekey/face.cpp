#include "tools/updatekey/face.h"

#include <algorithm>
#include <cstdio>

#include "platform/posix/utf.h"

const FaceUse FACE_USES[3] = {
    {"Latin", "SegoeUI_13px", "SegoeUI_24px", {0, 1, 2, 3, 6}},
    {"Japanese", "MeiryoUI_24px", "MeiryoUI_36px", {4}},
    {"Chinese", "FangSong_24px", "FangSong_36px", {5}},
};

const FaceUse& faceUseOf(int32_t language) {
    return *std::find_if(std::begin(FACE_USES), std::end(FACE_USES) - 1,
                         [&](const FaceUse& use) { return use.languages.count(language) != 0; });
}

FontData loadKeyFace(const std::string& faceName) {
    const std::string path = "/USB HD/VELD/ORBUI/data/fonts/" + faceName;
    FontData face;
    loadFontFile(path + ".fnt", face);
    loadKerningFile(path + ".kern", face);
    return face;
}

std::string listCharacters(const std::set<WCHAR>& characters) {
    constexpr std::size_t shown = 8;
    std::string list;
    std::size_t count = 0;
    for (const WCHAR code : characters) {
        if (count++ == shown)
            return list + ", and " + std::to_string(characters.size() - shown) + " more";
        char number[16];
        std::snprintf(number, sizeof number, "U+%04X", static_cast<unsigned>(code));
        const bool printable = code > 0x20 && !(code >= 0x7F && code < 0xA0);
        list += list.empty() ? "" : ", ";
        list += printable ? "\"" + host::toUtf8({&code, 1}) + "\" (" + number + ")" : number;
    }
    return list;
}
