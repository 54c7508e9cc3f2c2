#include "render/binary_file.h"

#include "platform/win32.h"
#include "support/text.h"

FilePointer openBinaryFile(const std::string& path) {
    return FilePointer(_wfopen(widen(path).c_str(), TEXT("rb")));
}

uint64_t bytesLeft(std::FILE* file) {
    const long position = std::ftell(file);
    std::fseek(file, 0, SEEK_END);
    const long end = std::ftell(file);
    std::fseek(file, position, SEEK_SET);
    return position >= 0 && end > position ? static_cast<uint64_t>(end - position) : 0;
}
