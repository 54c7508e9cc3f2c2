// A disk whose power can go: an ext4 file system in an image, mounted at a folder.
#pragma once

#include <filesystem>

// What has become of all that was not flushed when the power went. Contents reach a disk long after
// names, so that files can be there without a byte.
enum class Unflushed { Kept, WithoutContents, Lost };

class DiskImage {
  public:
    // Makes the disk and mounts it. When that is impossible, the reason is on standard error.
    explicit DiskImage(std::filesystem::path folder);
    DiskImage(const DiskImage&) = delete;
    DiskImage& operator=(const DiskImage&) = delete;
    ~DiskImage();

    bool isMounted() const { return mounted_; }

    // Unmounts the disk and mounts it again, which brings it in order after a power cut.
    void remount();

  private:
    std::filesystem::path folder_;
    std::filesystem::path image_;
    bool mounted_ = false;
};

// Simulates a power cut of the disk mounted at `folder`: later writes are lost. Returns whether the
// system supports it.
bool cutPower(const std::filesystem::path& folder, Unflushed unflushed);

// Keeps the mounts of this process and its children to themselves, so that they end with them.
// Returns whether disks can be mounted here and lose their power; if not, the reason is on standard
// error.
bool canCutPower();
