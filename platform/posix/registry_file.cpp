#include "platform/posix/registry_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <fstream>
#include <iterator>

#include "platform/posix/device.h"
#include "platform/posix/last_error.h"

namespace host {
namespace {

std::string registryPath() {
    return deviceRoot() + "/registry.reg";
}

}  // namespace

Registry loadRegistry() {
    std::ifstream file(registryPath(), std::ios::binary);
    return Registry::fromText(
        std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()));
}

DWORD saveRegistry(const Registry& registry) {
    const std::string path = registryPath();
    const std::string temporary = path + ".new";
    const std::string text = registry.toText();
    const int file = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (file < 0)
        return windowsError(errno, temporary);
    const bool written =
        ::write(file, text.data(), text.size()) == static_cast<ssize_t>(text.size()) &&
        ::fsync(file) == 0;
    DWORD error = written ? ERROR_SUCCESS : windowsError(errno, temporary);
    ::close(file);
    if (error == ERROR_SUCCESS && ::rename(temporary.c_str(), path.c_str()) != 0)
        error = windowsError(errno, path);
    if (error != ERROR_SUCCESS)
        ::unlink(temporary.c_str());
    return error;
}

}  // namespace host
