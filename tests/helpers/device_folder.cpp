#include "tests/helpers/device_folder.h"

#include <algorithm>
#include <fstream>
#include <iterator>

namespace fs = std::filesystem;

fs::path DeviceFolder::at(const std::string& path) const {
    std::string relative = path;
    std::replace(relative.begin(), relative.end(), '\\', '/');
    relative.erase(0, relative.find_first_not_of('/'));
    return (root_ / relative).lexically_normal();
}

void DeviceFolder::write(const std::string& path, const std::string& bytes) const {
    fs::create_directories(at(path).parent_path());
    std::ofstream(at(path), std::ios::binary) << bytes;
}

void DeviceFolder::makeFolder(const std::string& path) const {
    fs::create_directories(at(path));
}

void DeviceFolder::setReadOnly(const std::string& path) const {
    constexpr auto ANY_WRITE =
        fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
    fs::permissions(at(path), ANY_WRITE, fs::perm_options::remove);
}

std::string DeviceFolder::read(const std::string& path) const {
    std::ifstream file(at(path), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

bool DeviceFolder::exists(const std::string& path) const {
    return fs::symlink_status(at(path)).type() != fs::file_type::not_found;
}

Tree DeviceFolder::tree(const std::string& path) const {
    Tree result;
    std::error_code error;
    for (fs::recursive_directory_iterator entry(at(path), error), end; entry != end; ++entry) {
        const std::string name = entry->path().lexically_relative(at(path)).generic_string();
        if (entry->is_symlink())
            result[name] = "-> " + fs::read_symlink(entry->path()).string();
        else if (entry->is_directory())
            result[name + "/"] = "";
        else
            result[name] = read(path + "/" + name);
    }
    return result;
}
