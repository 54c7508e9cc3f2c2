#include "tools/host/host_file.h"

#include <cerrno>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>
#ifdef _WIN32
#include "platform/win32.h"
#endif

namespace fs = std::filesystem;

namespace {

[[noreturn]] void fail(const fs::path& path, const char* what, const std::string& reason) {
    throw std::runtime_error(path.generic_string() + ": cannot be " + what + ": " + reason);
}

}  // namespace

std::string readHostFile(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::string content{std::istreambuf_iterator<char>(file), {}};
    if (!file.is_open() || file.bad())
        fail(path, "read", lastError());
    return content;
}

void requireReadable(const fs::path& path) {
    if (!std::ifstream(path).is_open())
        fail(path, "read", lastError());
}

std::string readHostFileIfThere(const fs::path& path) {
    std::error_code error;
    const fs::file_type type = fs::status(path, error).type();
    return type == fs::file_type::not_found ? std::string() : readHostFile(path);
}

std::string lastError() {
#ifdef _WIN32
    // The runtime says "permission denied" of every file that it may not open.
    if (GetLastError() == ERROR_SHARING_VIOLATION)
        return "it is in use by another program";
#endif
    return std::generic_category().message(errno);
}

void writeHostFile(const fs::path& path, const std::string& content) {
    fs::path unfinished = path;
    unfinished += ".part";
    std::ofstream file(unfinished, std::ios::binary | std::ios::trunc);
    file.write(content.data(), static_cast<std::streamsize>(content.size()));
    file.close();
    const std::string reason = file ? "" : lastError();
    std::error_code failure;
    if (file)
        fs::rename(unfinished, path, failure);
    if (file && !failure)
        return;
    std::error_code ignored;
    fs::remove(unfinished, ignored);
    fail(path, "written", failure ? failure.message() : reason);
}
