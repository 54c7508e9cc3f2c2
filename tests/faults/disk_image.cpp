#include "tests/faults/disk_image.h"

#include <fcntl.h>
#include <sched.h>
#include <spawn.h>
#include <sys/ioctl.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include "platform/posix/files/descriptor.h"
#include "tests/helpers/scratch.h"

namespace fs = std::filesystem;

namespace {

bool succeeds(std::vector<std::string> command) {
    std::vector<char*> arguments(command.size() + 1, nullptr);
    std::transform(command.begin(), command.end(), arguments.begin(),
                   [](std::string& argument) { return argument.data(); });
    pid_t process = 0;
    int status = -1;
    return ::posix_spawnp(&process, arguments[0], nullptr, nullptr, arguments.data(), environ) ==
               0 &&
           ::waitpid(process, &status, 0) == process && status == 0;
}

}  // namespace

DiskImage::DiskImage(fs::path folder)
    : folder_(std::move(folder)), image_(makeScratchFolder() / "disk") {
    std::ofstream image(image_);
    fs::resize_file(image_, 4 << 20);
    if (succeeds({"mke2fs", "-q", "-t", "ext4", "-b", "1024", "-J", "size=1", "-E",
                  "lazy_itable_init=0", image_}))
        remount();
    fs::remove(folder_ / "lost+found");
}

DiskImage::~DiskImage() {
    ::umount(folder_.c_str());
    removeScratchFolder(image_.parent_path());
}

// With commit=1000 nothing is flushed during a test merely because time passes.
void DiskImage::remount() {
    if (mounted_ && ::umount(folder_.c_str()) != 0)
        std::abort();
    mounted_ = succeeds({"mount", "-o", "loop,commit=1000,noauto_da_alloc", image_, folder_});
}

bool cutPower(const fs::path& folder, Unflushed unflushed) {
    constexpr unsigned long SHUT_DOWN = _IOR('X', 125, uint32_t);
    // The kernel's values: flush everything first, flush the journal first, flush nothing.
    const auto how = static_cast<uint32_t>(unflushed);
    const host::Descriptor opened(::open(folder.c_str(), O_RDONLY | O_CLOEXEC));
    return ::ioctl(opened.number(), SHUT_DOWN, &how) == 0;
}

bool canCutPower() {
    const fs::path folder = makeScratchFolder();
    bool possible = ::unshare(CLONE_NEWNS) == 0 &&
                    ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
    if (possible) {
        const DiskImage disk(folder);
        // Some emulators do not support the request.
        possible = disk.isMounted() && cutPower(folder, Unflushed::Lost);
    }
    if (!possible)
        std::perror("disk image");
    removeScratchFolder(folder);
    return possible;
}
