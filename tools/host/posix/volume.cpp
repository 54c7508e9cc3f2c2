#include "tools/host/volume.h"

#include <sys/stat.h>
#include <sys/statvfs.h>
#include <sys/sysmacros.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <sstream>
#include <system_error>

#include "tools/host/folder_tree.h"
#include "tools/host/host_file.h"
#include "tools/host/process.h"

namespace fs = std::filesystem;

namespace {

// Decodes what the system writes for a blank: "\040" in its list of mounts, "\x20" in labels.
std::string decoded(const std::string& text, const char* mark, int base) {
    std::string plain;
    const std::string sign = mark;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::size_t digits = base == 8 ? 3 : 2;
        const bool coded =
            text.compare(i, sign.size(), sign) == 0 && text.size() >= i + sign.size() + digits;
        if (!coded) {
            plain += text[i];
            continue;
        }
        const std::string number = text.substr(i + sign.size(), digits);
        plain += static_cast<char>(std::strtol(number.c_str(), nullptr, base));
        i += sign.size() + digits - 1;
    }
    return plain;
}

// The number of clusters decides which FAT it is.
std::string nameOfFat(const fs::path& folder) {
    struct statvfs status {};
    if (::statvfs(folder.c_str(), &status) != 0)
        return "FAT";
    return status.f_blocks >= 65'525 ? "FAT32" : status.f_blocks >= 4'085 ? "FAT16" : "FAT12";
}

std::string labelOf(const std::string& device, const fs::path& systemRoot) {
    std::error_code error;
    for (const fs::directory_entry& entry :
         fs::directory_iterator(systemRoot / "dev/disk/by-label", error))
        if (fs::read_symlink(entry.path(), error).filename() == fs::path(device).filename())
            return decoded(entry.path().filename().string(), "\\x", 16);
    return {};
}

// A line of the list of mounts: "36 35 8:1 / /media/stick rw,relatime shared:1 - vfat /dev/sda1
// rw".
std::optional<Volume> parseMount(const std::string& line, const fs::path& systemRoot) {
    std::istringstream words(line);
    std::string word;
    std::string number;
    std::string root;
    std::string folder;
    words >> word >> word >> number >> root >> folder;
    while (words >> word && word != "-") {
    }
    Volume volume;
    words >> volume.fileSystem >> volume.device;
    std::error_code error;
    fs::path device = fs::canonical(systemRoot / "sys/dev/block" / number, error);
    if (!words || error || root != "/")
        return std::nullopt;
    if (fs::exists(device / "partition"))
        device = device.parent_path();
    volume.folder = decoded(folder, "\\", 8);
    volume.disk = "/dev/" + device.filename().string();
    volume.removable = readHostFileIfThere(device / "removable").substr(0, 1) == "1" ||
                       device.string().find("/usb") != std::string::npos;
    if (volume.fileSystem == "vfat")
        volume.fileSystem = nameOfFat(volume.folder);
    volume.label = labelOf(volume.device, systemRoot);
    return volume;
}

}  // namespace

std::vector<Volume> mountedVolumes(const fs::path& systemRoot) {
    std::vector<Volume> volumes;
    std::istringstream lines(readHostFileIfThere(systemRoot / "proc/self/mountinfo"));
    for (std::string line; std::getline(lines, line);)
        if (std::optional<Volume> volume = parseMount(line, systemRoot))
            volumes.push_back(*volume);
    return volumes;
}

std::optional<Volume> volumeOf(const fs::path& path, const std::vector<Volume>& volumes) {
    struct stat place {};
    if (::stat(path.c_str(), &place) != 0)
        return std::nullopt;
    const auto holds = [&](const Volume& volume) {
        struct stat status {};
        return ::stat(volume.folder.c_str(), &status) == 0 && status.st_dev == place.st_dev;
    };
    const auto volume = std::find_if(volumes.begin(), volumes.end(), holds);
    return volume == volumes.end() ? std::nullopt : std::optional(*volume);
}

bool isMountPoint(const fs::path& folder) {
    struct stat place {};
    struct stat parent {};
    return ::stat(folder.c_str(), &place) == 0 && ::stat((folder / "..").c_str(), &parent) == 0 &&
           parent.st_dev != place.st_dev;
}

Room roomOn(const fs::path& folder) {
    struct statvfs status {};
    if (::statvfs(folder.c_str(), &status) != 0)
        throw fs::filesystem_error("statvfs", folder, {errno, std::generic_category()});
    if ((status.f_flag & ST_RDONLY) != 0)
        throw fs::filesystem_error("statvfs", folder, {EROFS, std::generic_category()});
    const uint64_t cluster = status.f_frsize;
    return {status.f_blocks * cluster, status.f_bavail * cluster, cluster};
}

fs::path homeFolder() {
    const char* const home = std::getenv("HOME");
    return home != nullptr ? home : "";
}

fs::path systemFolder() {
    return "/";
}

void eject(const Volume& volume) {
    outputOf({"udisksctl", "unmount", "--no-user-interaction", "-b", volume.device});
    outputOf({"udisksctl", "power-off", "--no-user-interaction", "-b", volume.disk});
}
