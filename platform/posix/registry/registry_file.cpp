#include "platform/posix/registry/registry_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "platform/input_limits.h"
#include "platform/posix/debug_output.h"
#include "platform/posix/files/descriptor.h"
#include "platform/posix/files/device.h"
#include "platform/posix/files/flush.h"
#include "platform/posix/files/place.h"
#include "platform/posix/last_error.h"

namespace host {
namespace {

std::string registryPath() {
    return deviceRoot() + "/" + REGISTRY_FILE;
}

// Appends the file to `text`, if it is a regular file, without waiting for another program. Returns
// 0 or the errno of the failure; EFBIG for a file of more than the limit.
int readWhole(const std::string& path, std::string& text) {
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    struct stat status {};
    if (!file.isOpen() || ::fstat(file.number(), &status) != 0)
        return errno;
    if (!S_ISREG(status.st_mode))
        return S_ISDIR(status.st_mode) ? EISDIR : EACCES;
    char piece[4096];
    for (;;) {
        const ssize_t got = ::read(file.number(), piece, sizeof piece);
        if (got <= 0)
            return got == 0 ? 0 : errno;
        text.append(piece, static_cast<std::size_t>(got));
        if (text.size() > limits::REGISTRY)
            return EFBIG;
    }
}

// Returns 0 or the errno of the failure.
int writeWhole(const Descriptor& file, const std::string& text) {
    const ssize_t written = ::write(file.number(), text.data(), text.size());
    if (written < 0)
        return errno;
    return static_cast<std::size_t>(written) < text.size() ? ENOSPC : 0;
}

}  // namespace

DWORD loadRegistry(Registry& registry) {
    std::string text;
    const int error = readWhole(registryPath(), text);
    if (error != 0 && error != ENOENT) {
        tell(std::string("registry.reg cannot be read: ") + std::strerror(error));
        return windowsError(error, registryPath());
    }
    registry = Registry::fromText(text);
    // Told once, although each call reads the file again.
    static std::size_t toldLine = 0;
    if (registry.lostLine != 0 && registry.lostLine != toldLine) {
        toldLine = registry.lostLine;
        tell("registry.reg: line " + std::to_string(toldLine) +
             " is neither a key nor a value; nothing will be written to this file");
    }
    return ERROR_SUCCESS;
}

DWORD saveRegistry(const Registry& registry) {
    if (registry.lostLine != 0)
        return ERROR_ACCESS_DENIED;
    const std::string path = registryPath();
    const std::string temporary = path + ".new";
    // Removes a file left by a run that was killed, or a link planted to redirect the write.
    ::unlink(temporary.c_str());
    const Descriptor file(
        ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666));
    int error = file.isOpen() ? writeWhole(file, registry.toText()) : errno;
    // The flush before the rename brings the content to the disk. The one after it is for FAT,
    // where the new name would otherwise lead to the blocks of the old file.
    if (error == 0 &&
        (::fsync(file.number()) != 0 || ::rename(temporary.c_str(), path.c_str()) != 0 ||
         ::fsync(file.number()) != 0))
        error = errno;
    if (error == 0) {
        const Descriptor folder(::open(deviceRoot().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        return flushFolder(folder.number());
    }
    ::unlink(temporary.c_str());
    return windowsError(error, path);
}

}  // namespace host
