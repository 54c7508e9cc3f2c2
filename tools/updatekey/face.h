// The faces of the key's own fonts.
#pragma once

#include <set>
#include <string>

#include "render/font_file.h"

// What the screen needs of a language's faces.
struct FaceUse {
    const char* group;        // for reading: "Latin"
    const char* messageFace;  // of the release notes
    const char* textFace;     // of the title and the state
    std::set<int32_t> languages;
};

// The three groups of languages.
extern const FaceUse FACE_USES[3];

// The group of a language, 0 to 6.
const FaceUse& faceUseOf(int32_t language);

// A face of the key that is plugged into the current device; without glyphs when it is missing.
FontData loadKeyFace(const std::string& faceName);

// The characters for a message: "é" (U+00E9), ...
std::string listCharacters(const std::set<WCHAR>& characters);
