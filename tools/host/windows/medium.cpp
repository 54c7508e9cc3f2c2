#include "tools/host/medium.h"

#include <memory>
#include <new>

#include "platform/win32.h"
#include "tools/host/windows/handle.h"

namespace fs = std::filesystem;

namespace {

constexpr DWORD PIECE = DWORD{1} << 20;

// Unbuffered reading needs a buffer that is aligned to a sector.
using Buffer = std::unique_ptr<void, void (*)(void*)>;

Buffer makeBuffer() {
    Buffer buffer(VirtualAlloc(nullptr, PIECE, MEM_COMMIT, PAGE_READWRITE),
                  [](void* memory) { VirtualFree(memory, 0, MEM_RELEASE); });
    if (!buffer)
        throw std::bad_alloc();
    return buffer;
}

void readAll(const fs::path& path, DWORD flags, const Piece& read) {
    const Handle file = openHandle(path, GENERIC_READ, OPEN_EXISTING, flags);
    const Buffer buffer = makeBuffer();
    for (DWORD got = 0;;) {
        if (ReadFile(file.get(), buffer.get(), PIECE, &got, nullptr) == FALSE)
            failAt(path);
        if (got == 0)
            return;
        read(static_cast<const char*>(buffer.get()), got);
    }
}

}  // namespace

void copyToMedium(const fs::path& from, const fs::path& to, const Piece& copied) {
    const Handle output = openHandle(to, GENERIC_WRITE, CREATE_ALWAYS, 0);
    readAll(from, FILE_FLAG_SEQUENTIAL_SCAN, [&](const char* bytes, std::size_t size) {
        DWORD written = 0;
        if (WriteFile(output.get(), bytes, static_cast<DWORD>(size), &written, nullptr) == FALSE)
            failAt(to);
        copied(bytes, size);
    });
    if (FlushFileBuffers(output.get()) == FALSE)
        failAt(to);
}

void readFromMedium(const fs::path& file, const Piece& read) {
    readAll(file, FILE_FLAG_NO_BUFFERING, read);
}

void flushMedium(const fs::path& folder) {
    // Without an administrator's rights only a removable disk can be flushed as a whole. The
    // content of every file has been flushed before.
    const Handle volume = openVolume(folder);
    if (volume && FlushFileBuffers(volume.get()) == FALSE && GetLastError() != ERROR_ACCESS_DENIED)
        failAt(folder);
}
