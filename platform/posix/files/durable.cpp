#include "platform/posix/files/durable.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

#include "platform/posix/files/descriptor.h"

namespace host {
namespace {

bool flush(int at, const char* folder, int (*call)(int)) {
    const Descriptor opened(::openat(at, folder, O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    // EINVAL: the file system has nothing to flush for a folder.
    return opened.isOpen() && (call(opened.number()) == 0 || errno == EINVAL);
}

}  // namespace

// One call for all files; flushing each file would wait for the disk once per file.
bool flushDisk(int folder) {
    return flush(folder, ".", ::syncfs);
}

bool flushFolder(int folder) {
    return flush(folder, ".", ::fsync);
}

bool flushFolderOf(const std::string& path) {
    const std::size_t end = path.rfind('/');
    return flush(AT_FDCWD, end == std::string::npos ? "." : path.substr(0, end + 1).c_str(),
                 ::fsync);
}

}  // namespace host
