#include "platform/posix/registry/registry_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "platform/posix/files/device.h"
#include "platform/posix/files/durable.h"
#include "platform/posix/files/read_file.h"
#include "platform/posix/last_error.h"

namespace host {
namespace {

std::string registryPath() {
    return deviceRoot() + "/registry.reg";
}

}  // namespace

DWORD loadRegistry(Registry& registry) {
    std::string text;
    const int error = readFile(registryPath(), text);
    if (error == 0 || error == ENOENT) {
        registry = Registry::fromText(text);
        return ERROR_SUCCESS;
    }
    std::fprintf(stderr, "registry.reg cannot be read: %s\n", std::strerror(error));
    return windowsError(error, registryPath());
}

DWORD saveRegistry(const Registry& registry) {
    const std::string path = registryPath();
    const std::string temporary = path + ".new";
    const std::string text = registry.toText();
    // Removes a file left by a run that was killed, or a link planted to redirect the write.
    ::unlink(temporary.c_str());
    const int file =
        ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666);
    if (file < 0)
        return windowsError(errno, temporary);
    const bool written =
        ::write(file, text.data(), text.size()) == static_cast<ssize_t>(text.size()) &&
        ::fsync(file) == 0;
    DWORD error = written ? ERROR_SUCCESS : windowsError(errno, temporary);
    ::close(file);
    if (error == ERROR_SUCCESS &&
        (::rename(temporary.c_str(), path.c_str()) != 0 || !flushFolderOf(path)))
        error = windowsError(errno, path);
    if (error != ERROR_SUCCESS)
        ::unlink(temporary.c_str());
    return error;
}

}  // namespace host
