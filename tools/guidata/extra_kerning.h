// Hand-picked kerning pairs, beside those of the font itself.
//
// The source is UTF-8 text, one pair a line: the two characters, a separator, and the amount in
// thousandths of the em, so that one source serves every size. Empty lines and lines that begin
// with "#" are passed over.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <utility>

#include "render/font_file.h"

// Thousandths of the em by first and second character.
using ExtraKerning = std::map<std::pair<char16_t, char16_t>, int>;

// The pairs of a source text. Nothing, with `error` naming file and line, when it is malformed.
std::optional<ExtraKerning> parseExtraKerning(const std::string& source,
                                              const std::string& fileName, std::string& error);

// The pairs in pixels of a face with an em of `emSize` pixels.
KerningTable scaledKerning(const ExtraKerning& pairs, double emSize);

// The bytes of the ".kern" file: UTF-16LE lines ended by CR LF, the first one a comment.
std::string encodeKernFile(const KerningTable& pairs);
