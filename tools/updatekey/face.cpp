#include "tools/updatekey/face.h"

#include <algorithm>
#include <cstdio>

#include "platform/posix/utf.h"

const FaceUse FACE_USES[3] = {
    {"Latin", "SegoeUI_13px", "SegoeUI_24px", {0, 1, 2, 3, 6}},
    {"Japanese", "MeiryoUI_24px", "MeiryoUI_36px", {4}},
    {"Chinese", "FangSong_24px", "FangSong_36px", {5}},
};

namespace {

float widthScale(WCHAR code) {
    const bool narrowed = (code >= 0x30A0 && code <= 0x30FF) || (code >= 0x4E00 && code <= 0x9FFF);
    return narrowed ? 2.0F / 3.0F : 1.0F;
}

bool isPassedOver(WCHAR code) {
    return code == 0xFEFF || code == TEXT('\r') || code == TEXT('\n');
}

}  // namespace

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

DrawnText drawnText(const FontData& face, const WideString& text) {
    DrawnText drawn{0, {}};
    const WideString line = text.substr(0, text.find(WCHAR{}));
    float pen = 0;
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (isPassedOver(line[i]))
            continue;
        const auto glyph = face.glyphs.find(static_cast<uint16_t>(line[i]));
        if (glyph == face.glyphs.end()) {
            drawn.missing.insert(line[i]);
            continue;
        }
        const auto pair = i > 0 ? face.kerning.find({line[i - 1], line[i]}) : face.kerning.end();
        const float kerning = pair != face.kerning.end() ? pair->second : 0.0F;
        const float scale = widthScale(line[i]);
        const float glyphEnd = pen + kerning + static_cast<float>(glyph->second.width) * scale;
        drawn.right = std::max(drawn.right, glyphEnd);
        pen += static_cast<float>(static_cast<uint16_t>(glyph->second.xadvance)) * scale;
    }
    return drawn;
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
