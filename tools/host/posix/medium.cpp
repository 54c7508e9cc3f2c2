#include "tools/host/medium.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <memory>
#include <system_error>

#include "platform/posix/files/descriptor.h"

namespace fs = std::filesystem;

namespace {

using host::Descriptor;

[[noreturn]] void failFromErrno(const fs::path& path) {
    throw fs::filesystem_error("", path, {errno, std::generic_category()});
}

class Buffer {
  public:
    static constexpr std::size_t SIZE = std::size_t{1} << 20;
    // O_DIRECT needs a buffer that is aligned to a page.
    Buffer() : bytes_(static_cast<char*>(std::aligned_alloc(4096, SIZE)), &std::free) {
        if (!bytes_)
            throw std::bad_alloc();
    }
    char* data() const { return bytes_.get(); }

  private:
    std::unique_ptr<char, void (*)(void*)> bytes_;
};

void readAll(int file, const fs::path& path, const Piece& read) {
    const Buffer buffer;
    for (ssize_t got = 0; (got = ::read(file, buffer.data(), Buffer::SIZE)) != 0;) {
        if (got < 0)
            failFromErrno(path);
        read(buffer.data(), static_cast<std::size_t>(got));
    }
}

// With O_DIRECT where the file system supports it, otherwise after dropping the cached pages.
Descriptor openPastCache(const fs::path& path) {
    Descriptor file(::open(path.c_str(), O_RDONLY | O_DIRECT | O_CLOEXEC));
    if (file.isOpen() || errno != EINVAL)
        return file;
    file = Descriptor(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (file.isOpen())
        ::posix_fadvise(file.number(), 0, 0, POSIX_FADV_DONTNEED);
    return file;
}

}  // namespace

void copyToMedium(const fs::path& from, const fs::path& to, const Piece& copied) {
    const Descriptor input(::open(from.c_str(), O_RDONLY | O_CLOEXEC));
    if (!input.isOpen())
        failFromErrno(from);
    const Descriptor output(
        ::open(to.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_NOFOLLOW | O_CLOEXEC, 0666));
    if (!output.isOpen())
        failFromErrno(to);
    readAll(input.number(), from, [&](const char* bytes, std::size_t size) {
        for (std::size_t done = 0; done < size;) {
            const ssize_t written = ::write(output.number(), bytes + done, size - done);
            if (written < 0)
                failFromErrno(to);
            done += static_cast<std::size_t>(written);
        }
        copied(bytes, size);
    });
    if (::fsync(output.number()) != 0)
        failFromErrno(to);
}

void readFromMedium(const fs::path& file, const Piece& read) {
    const Descriptor input = openPastCache(file);
    if (!input.isOpen())
        failFromErrno(file);
    readAll(input.number(), file, read);
}

void flushMedium(const fs::path& folder) {
    const Descriptor place(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    // On FAT, syncfs writes everything but leaves it in the disk's cache; fsync empties that cache.
    if (!place.isOpen() || ::syncfs(place.number()) != 0 || ::fsync(place.number()) != 0)
        failFromErrno(folder);
}
