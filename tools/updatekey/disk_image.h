// A key as a disk image: a FAT32 file system with the key on it, to be written to sticks by any
// imager, and the way back from such an image to the key's files.
#pragma once

#include <cstdint>
#include <filesystem>

#include "tools/updatekey/check.h"

struct ImageOptions {
    std::filesystem::path key;
    std::filesystem::path out;   // file to be made; there must be none of this name
    uint64_t size = 0;           // bytes of the whole image; 0 for the least that holds the key
    bool partitionTable = true;  // one partition in a table, as sticks have it, or none
    CheckOptions check;
};

struct ImageReport {
    CheckReport check;
    uint64_t bytes = 0;    // of the image
    bool written = false;  // false when the check found errors: then no image is left
};

// Writes the image of a key in which no error is found, reads it back, and compares every file with
// the key's. The same key gives the same bytes: the volume's number is fixed, and times are those
// of the key's files. The image has at least the 65,525 clusters below which other systems take a
// file system for FAT16. Throws std::runtime_error when the image cannot be written, or does not
// hold what was written.
ImageReport makeImage(const ImageOptions& options);

// Whether `path` is a file that an image can be read from.
bool isImage(const std::filesystem::path& path);

// Copies all that is on the image into the empty folder `to`. Throws std::runtime_error when the
// file is no image of a FAT file system.
void unpackImage(const std::filesystem::path& image, const std::filesystem::path& to);
