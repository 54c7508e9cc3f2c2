#include "platform/posix/registry_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

#include "platform/posix/device.h"
#include "platform/posix/durable.h"
#include "platform/posix/last_error.h"
#include "platform/posix/read_file.h"

namespace host {
namespace {

std::string registryPath() {
    return deviceRoot() + "/registry.reg";
}

}  // namespace

Registry loadRegistry() {
    return Registry::fromText(readFile(registryPath()));
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
    if (error == ERROR_SUCCESS &&
        (::rename(temporary.c_str(), path.c_str()) != 0 || !flushFolderOf(path)))
        error = windowsError(errno, path);
    if (error != ERROR_SUCCESS)
        ::unlink(temporary.c_str());
    return error;
}

}  // namespace host
