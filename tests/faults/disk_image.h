// A disk whose power can be cut: an ext4 file system in an image file, mounted at a folder.
#pragma once

#include <filesystem>

// What a power cut does to data that was not flushed. Contents reach the disk long after names, so
// a file can exist without its contents.
enum class Unflushed { Kept, WithoutContents, Lost };

class DiskImage {
  public:
    // Makes the disk and mounts it. On failure the reason is printed to standard error.
    explicit DiskImage(std::filesystem::path folder);
    DiskImage(const DiskImage&) = delete;
    DiskImage& operator=(const DiskImage&) = delete;
    ~DiskImage();

    bool isMounted() const { return mounted_; }

    // Unmounts the disk and mounts it again, which recovers the file system after a power cut.
    void remount();

  private:
    std::filesystem::path folder_;
    std::filesystem::path image_;
    bool mounted_ = false;
};

// Simulates a power cut of the disk mounted at `folder`: later writes are lost. Returns whether the
// system supports it.
bool cutPower(const std::filesystem::path& folder, Unflushed unflushed);

// Makes later mounts private to this process and its children, so that they end with them. Returns
// whether a disk can be mounted and its power cut; if not, prints the reason to standard error.
bool canCutPower();
