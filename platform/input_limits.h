// The most that is read of each kind of file that an update key, the GUI data or the registry
// provides. No file of an instrument comes near its limit; a damaged or hostile one can neither
// fill the memory nor hold up the screen. All limits are in bytes.
#pragma once

#include <cstddef>

namespace limits {

constexpr std::size_t KILOBYTE = std::size_t{1} << 10;
constexpr std::size_t MEGABYTE = std::size_t{1} << 20;

// The screen shows 24 lines of the release notes. Every frame draws all of them, so that notes of
// this size, which can be one empty line for each byte, must still be drawn fast.
constexpr std::size_t RELEASE_NOTES = 64 * KILOBYTE;

// The instrument's tables have 3 KB.
constexpr std::size_t STRING_TABLE = MEGABYTE;

// Room for 64,000 pairs.
constexpr std::size_t KERNING_FILE = MEGABYTE;

// A glyph for every 16-bit character and as many kerning pairs as a face may have.
constexpr std::size_t FONT_FILE = 16 * MEGABYTE;

// The pages, glyphs and kerning pairs of a face together: sixteen pages of the instrument's largest
// texture, 2048 pixels on each side.
constexpr std::size_t FACE_IN_MEMORY = 64 * MEGABYTE;

// A larger picture (".raw") is loaded only when its file holds at least half of it: a font file can
// claim pages of 65535 pixels on each side. The largest texture in three colours has this size.
constexpr std::size_t COMPLETED_PICTURE = 12 * MEGABYTE;

// The exported registry of a whole instrument has a few megabytes.
constexpr std::size_t REGISTRY = 16 * MEGABYTE;

}  // namespace limits
