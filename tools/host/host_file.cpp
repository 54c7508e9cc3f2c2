#include "tools/host/host_file.h"

#include <cerrno>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>

namespace fs = std::filesystem;

namespace {

[[noreturn]] void fail(const fs::path& path, const char* what) {
    const std::string reason = errno != 0 ? ": " + lastError() : "";
    throw std::runtime_error(path.generic_string() + ": cannot be " + what + reason);
}

}  // namespace

std::string readHostFile(const fs::path& path) {
    errno = 0;
    std::ifstream file(path, std::ios::binary);
    std::string content{std::istreambuf_iterator<char>(file), {}};
    if (!file.is_open() || file.bad())
        fail(path, "read");
    return content;
}

void requireReadable(const fs::path& path) {
    errno = 0;
    if (!std::ifstream(path).is_open())
        fail(path, "read");
}

std::string readHostFileIfThere(const fs::path& path) {
    std::error_code error;
    const fs::file_type type = fs::status(path, error).type();
    return type == fs::file_type::not_found ? std::string() : readHostFile(path);
}

void writeHostFile(const fs::path& path, const std::string& content) {
    fs::path unfinished = path;
    unfinished += ".part";
    errno = 0;
    std::ofstream file(unfinished, std::ios::binary | std::ios::trunc);
    file.write(content.data(), static_cast<std::streamsize>(content.size()));
    file.close();
    std::error_code failure;
    if (file) {
        fs::rename(unfinished, path, failure);
        errno = failure.value();
    }
    if (file && !failure)
        return;
    std::error_code ignored;
    fs::remove(unfinished, ignored);
    fail(path, "written");
}
