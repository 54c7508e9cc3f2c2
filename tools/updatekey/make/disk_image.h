// Writes a key as a disk image with a FAT32 file system, for any imager, and extracts the files of
// such an image.
#pragma once

#include <cstdint>
#include <filesystem>

#include "tools/updatekey/check/check.h"

struct ImageOptions {
    std::filesystem::path key;
    std::filesystem::path out;      // the image file; must not exist yet
    uint64_t size = 0;              // bytes of the whole image; 0: as small as possible
    bool noPartitionTable = false;  // the file system alone, without a table of partitions
};

struct ImageReport {
    CheckReport check;
    uint64_t bytes = 0;    // size of the image
    bool written = false;  // false when the check found errors: no image is created
};

// Writes an image of a key without errors, reads it back and compares every file with the key's.
// The image is reproducible: the volume id is fixed, and times are those of the key's files. The
// image has at least 65,525 clusters, below which systems treat it as FAT16. Throws
// std::runtime_error when the image cannot be written or does not match the key.
ImageReport makeImage(const ImageOptions& options, const CheckOptions& check);

// Whether `path` may be a disk image.
bool mayBeImage(const std::filesystem::path& path);

// Extracts everything in the image to the empty folder `to`. Throws std::runtime_error when the
// file is not an image of a FAT file system.
void unpackImage(const std::filesystem::path& image, const std::filesystem::path& to);
