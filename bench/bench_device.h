// The trees that are measured on, in a folder of their own below the temporary folder (TMPDIR).
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

class BenchDevice {
  public:
    // Makes the folder, and the device root of this process and its children with it.
    BenchDevice();
    BenchDevice(const BenchDevice&) = delete;
    BenchDevice& operator=(const BenchDevice&) = delete;
    ~BenchDevice();

    const std::filesystem::path& root() const { return root_; }

    // Writes a file, and the folders above it, below the root.
    void write(const std::string& path, const std::string& bytes) const;

    // An update key: one half of the files in "KSTRL", the other in subfolders of the GUI data,
    // each with `size` bytes, and `lines` lines of release notes.
    void makeKey(std::size_t files, std::size_t size, std::size_t lines) const;

    // A key of one file of that size, and a small one to make it valid.
    void makeKeyOfOneFile(std::size_t size) const;

    // An installation that starts: "KSTRL.exe" is a program that ends at once.
    void makeInstallation() const;

    // GUI data of the size of the instrument's: four faces, texts and the background.
    void makeGuiData(const std::string& folder) const;

  private:
    std::filesystem::path root_;
};

// A release-notes line as they are: some 40 characters.
std::string releaseNotesLine(std::size_t number);

// Brings what was written to the disk, so that a measurement does not pay for the one before.
void settleDisk();
