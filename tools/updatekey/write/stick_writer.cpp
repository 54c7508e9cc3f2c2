// Writes one stick: checks its space, copies the files, flushes them, reads them back, and only
// then renames the update's folder to its final name.

#include <fcntl.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <system_error>

#include "platform/posix/files/descriptor.h"
#include "tools/host/folder_tree.h"
#include "tools/updatekey/check/key_paths.h"
#include "tools/updatekey/check/names.h"
#include "tools/updatekey/write/sticks.h"

namespace fs = std::filesystem;

namespace {

using host::Descriptor;

using keypaths::UNFINISHED;

[[noreturn]] void fail(const std::string& reason) {
    throw std::runtime_error(reason);
}

// Throws an error that explains errno to the person with the stick.
[[noreturn]] void failFromErrno(const std::string& path) {
    switch (errno) {
        case ENOSPC:
            fail("the stick is full; delete other files from it, or use a larger one");
        case EROFS:
            fail("the stick is write-protected; look for a switch on it, or use another one");
        case ENOENT:
        case ENODEV:
        case ENXIO:
        case EIO:
            fail("the stick was pulled out, or is defective (at " + path + ")");
        default:
            fail("cannot write " + path + ": " + std::generic_category().message(errno));
    }
}

class Buffer {
  public:
    static constexpr std::size_t SIZE = std::size_t{1} << 20;
    // O_DIRECT needs a buffer that is aligned to a page.
    Buffer() : bytes_(static_cast<char*>(std::aligned_alloc(4096, SIZE)), &std::free) {
        if (!bytes_)
            fail("out of memory");
    }
    char* data() const { return bytes_.get(); }

  private:
    std::unique_ptr<char, void (*)(void*)> bytes_;
};

// Reports the progress of writing and reading back. 100 percent is reported only at the very end.
class Meter {
  public:
    Meter(uint64_t total, Progress progress) : total_(total), progress_(std::move(progress)) {}
    void add(uint64_t bytes) {
        done_ += bytes;
        progress_(total_ == 0 ? 99 : static_cast<int>(done_ * 99 / total_));
    }
    void finish() { progress_(100); }

  private:
    uint64_t total_;
    uint64_t done_ = 0;
    Progress progress_;
};

void requireWritable(const fs::path& stick, uint64_t bytes) {
    if (!fs::is_directory(stick))
        fail("there is no such folder; is the stick mounted?");
    struct statvfs status {};
    if (::statvfs(stick.c_str(), &status) != 0)
        failFromErrno(stick.string());
    if ((status.f_flag & ST_RDONLY) != 0) {
        errno = EROFS;
        failFromErrno(stick.string());
    }
    if (uint64_t{status.f_bavail} * status.f_frsize < bytes) {
        errno = ENOSPC;
        failFromErrno(stick.string());
    }
}

// Deletes what an interrupted run left and, with `replace`, an earlier update. Compares names
// without case, as FAT and the device do.
void clearWay(const fs::path& stick, bool replace) {
    for (const fs::directory_entry& entry : fs::directory_iterator(stick)) {
        const std::string name = foldCase(entry.path().filename().string());
        std::error_code error;
        if (name == foldCase(UNFINISHED))
            fs::remove_all(entry.path(), error);
        if (name != foldCase(keypaths::MAKER))
            continue;
        if (!replace)
            fail("the stick already contains an update, in " + keypaths::MAKER +
                 "/; add --replace to delete that folder");
        fs::remove_all(entry.path(), error);
        if (error) {
            errno = error.value();
            failFromErrno(entry.path().string());
        }
    }
}

void copyFile(const fs::path& from, const fs::path& to, const Buffer& buffer, Meter& meter) {
    const Descriptor input(::open(from.c_str(), O_RDONLY | O_CLOEXEC));
    if (!input.isOpen())
        fail("cannot read " + from.string() + ": " + std::generic_category().message(errno));
    const Descriptor output(
        ::open(to.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_NOFOLLOW | O_CLOEXEC, 0666));
    if (!output.isOpen())
        failFromErrno(to.string());
    for (ssize_t got = 0; (got = ::read(input.number(), buffer.data(), Buffer::SIZE)) != 0;) {
        if (got < 0)
            fail("cannot read " + from.string() + ": " + std::generic_category().message(errno));
        for (ssize_t done = 0; done < got;) {
            const ssize_t written = ::write(output.number(), buffer.data() + done,
                                            static_cast<std::size_t>(got - done));
            if (written < 0)
                failFromErrno(to.string());
            done += written;
        }
        meter.add(static_cast<uint64_t>(got));
    }
    if (::fsync(output.number()) != 0)
        failFromErrno(to.string());
}

// Opens a file so that its bytes are read from the stick: with O_DIRECT where the file system
// supports it, otherwise after dropping the cached pages. Returns -1 on failure.
int openPastCache(const fs::path& path) {
    int file = ::open(path.c_str(), O_RDONLY | O_DIRECT | O_CLOEXEC);
    if (file < 0 && errno == EINVAL) {
        file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
        if (file >= 0)
            ::posix_fadvise(file, 0, 0, POSIX_FADV_DONTNEED);
    }
    return file;
}

std::string checksumOnMedium(const fs::path& path, const Buffer& buffer, Meter& meter) {
    const Descriptor file(openPastCache(path));
    if (!file.isOpen())
        failFromErrno(path.string());
    Checksum checksum;
    for (ssize_t got = 0; (got = ::read(file.number(), buffer.data(), Buffer::SIZE)) != 0;) {
        if (got < 0)
            failFromErrno(path.string());
        checksum.add(buffer.data(), static_cast<std::size_t>(got));
        meter.add(static_cast<uint64_t>(got));
    }
    return checksum.text();
}

void flush(const fs::path& stick) {
    const Descriptor folder(::open(stick.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!folder.isOpen() || ::syncfs(folder.number()) != 0)
        failFromErrno(stick.string());
}

void writeManifest(const fs::path& stick, const Manifest& manifest) {
    const std::string text = toText(manifest);
    const fs::path path = stick / MANIFEST_NAME;
    const Descriptor file(
        ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_NOFOLLOW | O_CLOEXEC, 0666));
    if (!file.isOpen() ||
        ::write(file.number(), text.data(), text.size()) != static_cast<ssize_t>(text.size()))
        failFromErrno(path.string());
}

}  // namespace

void writeStick(const fs::path& key, const Manifest& manifest, const fs::path& stick, bool replace,
                const Progress& progress) try {
    uint64_t bytes = 0;
    for (const auto& [path, checksum] : manifest)
        bytes += fs::file_size(key / path);
    requireWritable(stick, 0);
    clearWay(stick, replace);
    requireWritable(stick, bytes);

    const Buffer buffer;
    Meter meter(2 * bytes, progress);
    const fs::path unfinished = stick / UNFINISHED;
    const auto onStick = [&](const std::string& path) {
        return unfinished / path.substr(keypaths::MAKER.size() + 1);
    };
    for (const TreeEntry& entry : readTree(key / keypaths::MAKER))
        if (entry.kind == TreeEntry::Kind::Folder)
            fs::create_directories(unfinished / entry.path);
    for (const auto& [path, checksum] : manifest)
        copyFile(key / path, onStick(path), buffer, meter);
    flush(stick);
    for (const auto& [path, checksum] : manifest)
        if (checksumOnMedium(onStick(path), buffer, meter) != checksum)
            fail(path + " differs when it is read back; do not use this stick");
    writeManifest(stick, manifest);
    fs::rename(unfinished, stick / keypaths::MAKER);
    flush(stick);
    meter.finish();
} catch (const fs::filesystem_error& error) {
    errno = error.code().value();
    failFromErrno(error.path1().string());
}
