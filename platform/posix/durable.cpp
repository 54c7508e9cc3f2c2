#include "platform/posix/durable.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

#include "platform/posix/descriptor.h"

namespace host {
namespace {

bool flush(const std::string& path, int (*call)(int)) {
    const std::size_t end = path.rfind('/');
    const std::string folder = end == std::string::npos ? "." : path.substr(0, end + 1);
    const Descriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    // EINVAL: a file system on which a folder has nothing to flush.
    return opened.isOpen() && (call(opened.number()) == 0 || errno == EINVAL);
}

}  // namespace

// One call for all files: a flush of each would wait for the disk as many times.
bool flushDiskOf(const std::string& path) {
    return flush(path, ::syncfs);
}

bool flushFolderOf(const std::string& path) {
    return flush(path, ::fsync);
}

}  // namespace host
