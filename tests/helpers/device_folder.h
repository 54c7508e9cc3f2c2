// A device for one test: an empty folder that stands for the device's file system while the object
// lives. On Windows it is the root of the current drive.
#pragma once

#include <filesystem>
#include <map>
#include <string>

class DeviceFolder {
  public:
    DeviceFolder();
    DeviceFolder(const DeviceFolder&) = delete;
    DeviceFolder& operator=(const DeviceFolder&) = delete;
    ~DeviceFolder();

    const std::filesystem::path& root() const { return root_; }

    // Paths are relative to the device's root, with "/": "USB HD/VELD/KSTRL/a". Folders on the way
    // are made. A device path of the program, with any separators, is taken too.
    void write(const std::string& path, const std::string& bytes = "") const;
    void makeFolder(const std::string& path) const;
    void setReadOnly(const std::string& path) const;

    std::string read(const std::string& path) const;
    bool exists(const std::string& path) const;

    // All below `path`: files with their bytes, folders with "/" behind their name. Relative names.
    std::map<std::string, std::string> tree(const std::string& path = "") const;

    // The language number of the device's configuration store; makes its key.
    void setLanguage(int language) const;

  private:
    std::filesystem::path at(const std::string& path) const;

    std::filesystem::path root_;
};

// Whether the Windows that the test runs on is Wine, for the cases in which it differs from
// Windows.
bool underWine();

using Tree = std::map<std::string, std::string>;
