// Pictures of the screen.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

struct Picture {
    uint32_t width = 0;
    uint32_t height = 0;
    std::vector<uint8_t> rgb;  // from the top left
};

// The picture of a PNG file; an empty one when it cannot be read.
Picture readPng(const std::string& path);

// Returns whether it was written.
bool writePng(const Picture& picture, const std::string& path);

// How many pixels of two pictures of one size differ by more than `tolerance` levels in some
// channel.
std::size_t differentPixels(const Picture& actual, const Picture& expected, int tolerance);
