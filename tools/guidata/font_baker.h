// Bakes a face of a font file into the glyphs, kerning pairs and pages that the device draws with.
#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "render/font_file.h"
#include "tools/guidata/extra_kerning.h"

struct BakeRequest {
    std::string faceName;  // of the files that come out: "SegoeUI_24px"
    std::string fontPath;
    int faceIndex = 0;   // in a collection of fonts
    double emSize = 0;   // pixels
    int lineHeight = 0;  // pixels
    int base = 0;        // from the line's top to its baseline, pixels
    int maxPageSide = 1024;
    std::set<char16_t> characters;
    ExtraKerning extraKerning;
};

struct BakedFace {
    std::string fontName;
    int emSize = 0;  // whole pixels
    FontData font;
    KerningTable extraKerning;
    std::vector<std::vector<uint8_t>> pages;  // coverage, atlas side squared, top row first
    std::vector<char16_t> missing;            // characters that the font file lacks
};

// The printable characters of Latin-1.
std::set<char16_t> latin1();

// Bakes the face. Nothing, with `error` saying why, when the font file cannot be used or a glyph
// would leave its line: the lines of the screen must not touch, and offsets are never negative.
std::optional<BakedFace> bakeFace(const BakeRequest& request, std::string& error);

// Writes N.fnt, N.kern and the pages N_0.raw, ... of face N into `folder`. Returns false, with
// `error` naming the file, on failure.
bool writeFace(const BakedFace& face, const std::string& faceName, const std::string& folder,
               std::string& error);
