// An empty folder that is the device's file system for one test. On Windows it is the root of the
// current drive. Its destructor ends the applications started on it.
#pragma once

#include <filesystem>
#include <map>
#include <string>

// The registry key of the system configuration, below HKEY_LOCAL_MACHINE.
constexpr const char* CONFIG_KEY = "SOFTWARE\\VELD\\KESTREL\\SYSTEM_CONFIG";

class DeviceFolder {
  public:
    DeviceFolder();
    DeviceFolder(const DeviceFolder&) = delete;
    DeviceFolder& operator=(const DeviceFolder&) = delete;
    ~DeviceFolder();

    const std::filesystem::path& root() const { return root_; }

    // Paths are relative to the device's root and use "/", such as "USB HD/VELD/KSTRL/a"; the
    // program's own paths, with any separators, work too. Parent folders are created.
    void write(const std::string& path, const std::string& bytes = "") const;
    void makeFolder(const std::string& path) const;
    void setReadOnly(const std::string& path) const;

    std::string read(const std::string& path) const;
    bool exists(const std::string& path) const;

    // Everything below `path`, by relative name: files with their content, folders with "/"
    // appended.
    std::map<std::string, std::string> tree(const std::string& path = "") const;

    // Stores the language number in the device's registry and creates the key.
    void setLanguage(int language) const;

  private:
    std::filesystem::path at(const std::string& path) const;

    std::filesystem::path root_;
};

// Whether the test runs under Wine, which differs from Windows in some cases.
bool underWine();

using Tree = std::map<std::string, std::string>;
