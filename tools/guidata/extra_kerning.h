// Hand-picked kerning pairs, in addition to those of the font.
//
// The source is UTF-8 text, one pair per line: the two characters, a separator, and the amount in
// thousandths of the em, so that one source serves all sizes. Empty lines and lines that begin with
// "#" are skipped.
#pragma once

#include <map>
#include <string>
#include <utility>

#include "render/font_file.h"

// Kerning in thousandths of the em, by first and second character.
using ExtraKerning = std::map<std::pair<char16_t, char16_t>, int>;

// Parses a source. Throws std::runtime_error, naming file and line, when it is malformed.
ExtraKerning parseExtraKerning(const std::string& source, const std::string& fileName);

// Converts the pairs to pixels for an em of `emSize` pixels.
KerningTable scaledKerning(const ExtraKerning& pairs, double emSize);

// Returns the bytes of the ".kern" file: UTF-16LE with CR LF line ends. The first line is a
// comment.
std::string encodeKernFile(const KerningTable& pairs);
