#include "tools/host/file_time.h"

#include <fcntl.h>
#include <sys/stat.h>

std::time_t changeTime(const std::filesystem::path& file) {
    struct stat status {};
    return ::stat(file.c_str(), &status) == 0 ? status.st_mtime : 0;
}

void setChangeTime(const std::filesystem::path& file, std::time_t time) {
    const timespec times[2] = {{time, 0}, {time, 0}};
    ::utimensat(AT_FDCWD, file.c_str(), times, AT_SYMLINK_NOFOLLOW);
}
