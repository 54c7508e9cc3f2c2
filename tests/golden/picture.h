// Pictures of the screen, and how two of them differ.
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

// Writes it with a palette, which keeps the file small. Returns whether it was written: no more
// than 256 colours are.
bool writePng(const Picture& picture, const std::string& path);

struct Difference {
    std::size_t pixels = 0;  // that differ by more than the tolerance in some channel
    int greatest = 0;        // of all channels of all pixels, in levels
    uint32_t left = UINT32_MAX, top = UINT32_MAX, right = 0, bottom = 0;  // of those pixels
    Picture picture;  // those pixels in white, smaller differences in grey

    std::string report() const;
};

// Of two pictures of one size; `tolerance` is in levels of a channel.
Difference compare(const Picture& actual, const Picture& expected, int tolerance);
