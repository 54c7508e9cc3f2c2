#include "tools/host/host_file.h"

#include <cstring>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "platform/posix/files/read_file.h"

namespace fs = std::filesystem;

bool readHostFile(const std::string& path, std::string& content, std::string& error) {
    const int failure = host::readFile(path, content);
    if (failure != 0)
        error = path + ": cannot be read: " + std::strerror(failure);
    return failure == 0;
}

std::string readHostFile(const std::string& path) {
    std::string content;
    std::string error;
    if (!readHostFile(path, content, error))
        throw std::runtime_error(error);
    return content;
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
