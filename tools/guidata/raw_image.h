// Pictures in the form that the device loads them: square, one byte of luminance a pixel, top row
// first, without a header.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

// The picture of a PNG file as side x side bytes. A smaller picture stands at the top left, the
// rest is black; transparency shows black, colours become grey. Nothing, with `error` naming the
// file, when it cannot be read or is larger than that.
std::optional<std::vector<uint8_t>> luminanceSquare(const std::string& path, uint32_t side,
                                                    std::string& error);
