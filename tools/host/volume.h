// The file systems that are mounted on this computer, and which of them are on sticks.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

struct Volume {
    std::filesystem::path folder;  // where it is mounted
    std::string label;             // empty when it has none
    std::string fileSystem;        // "FAT32", "FAT16", or the system's word for another one
    std::string device;            // the system's name of the file system's device
    std::string disk;              // the same for all file systems on one disk; empty when unknown
    bool removable = false;        // on a removable disk, or on a USB disk
};

struct Room {
    uint64_t size = 0;  // bytes of the file system
    uint64_t free = 0;  // bytes that this user can write
    uint64_t cluster = 4096;
};

// Lists the file systems on disks. A test may give a folder with its own system files.
std::vector<Volume> mountedVolumes(const std::filesystem::path& systemRoot = "/");

// Returns the file system that holds `path`; nothing for one that is on no disk.
std::optional<Volume> volumeOf(const std::filesystem::path& path,
                               const std::vector<Volume>& volumes);

// Whether a file system of its own is mounted there.
bool isMountPoint(const std::filesystem::path& folder);

Room roomOn(const std::filesystem::path& folder);

// The home folder of the user; empty when unknown.
std::filesystem::path homeFolder();

// The folder that the operating system is on.
std::filesystem::path systemFolder();

// Takes the file system out of use, and switches its disk off, so that it may be pulled out. Throws
// std::runtime_error, with the reason, on failure.
void eject(const Volume& volume);
