// Renders a face of a font file into the glyphs, kerning pairs and pages that the device uses.
#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "render/font_file.h"
#include "tools/guidata/extra_kerning.h"

struct BakeRequest {
    std::string faceName;  // base name of the output files, such as "SegoeUI_24px"
    std::string fontPath;
    int faceIndex = 0;   // index in a font collection
    double emSize = 0;   // pixels
    int lineHeight = 0;  // pixels
    int base = 0;        // pixels from the top of the line to the baseline
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

// Returns the printable characters of Latin-1.
std::set<char16_t> latin1();

// Renders the face. Throws std::runtime_error when the font file is unusable or a glyph extends
// above or below its line: the lines of the screen must not touch, and the device has no negative
// offsets.
BakedFace bakeFace(const BakeRequest& request);

// Writes N.fnt, N.kern and the pages N_0.raw, ... of face N into `folder`. Throws
// std::runtime_error, naming the file, on failure.
void writeFace(const BakedFace& face, const std::string& faceName, const std::string& folder);
