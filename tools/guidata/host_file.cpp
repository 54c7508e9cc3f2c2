#include "tools/guidata/host_file.h"

#include <filesystem>
#include <fstream>
#include <iterator>

namespace fs = std::filesystem;

bool readHostFile(const std::string& path, std::string& content, std::string& error) {
    std::ifstream file(path, std::ios::binary);
    if (!file || fs::is_directory(path)) {
        error = path + ": cannot be read";
        return false;
    }
    content.assign(std::istreambuf_iterator<char>(file), {});
    return true;
}

bool writeHostFile(const std::string& path, const std::string& content, std::string& error) {
    const std::string unfinished = path + ".part";
    std::ofstream file(unfinished, std::ios::binary | std::ios::trunc);
    file.write(content.data(), static_cast<std::streamsize>(content.size()));
    file.close();
    std::error_code failure;
    if (file)
        fs::rename(unfinished, path, failure);
    if (!file || failure) {
        error = path + ": cannot be written";
        fs::remove(unfinished, failure);
        return false;
    }
    return true;
}
