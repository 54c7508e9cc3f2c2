// Pictures in the device's format: square, one byte of luminance per pixel, top row first, without
// a header.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

// Converts a PNG file to side x side bytes. A smaller picture is placed at the top left on black.
// Colours become grey, transparent pixels black. Throws std::runtime_error, naming the file,
// when it cannot be read or its picture is larger.
std::vector<uint8_t> luminanceSquare(const std::string& path, uint32_t side);
