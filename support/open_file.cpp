#include "support/open_file.h"

#include "support/text.h"

FilePointer openFile(const std::string& path, LPCWSTR mode) {
    return FilePointer(_wfopen(widen(path).c_str(), mode));
}

uint64_t bytesLeft(std::FILE* file) {
    const long position = std::ftell(file);
    std::fseek(file, 0, SEEK_END);
    const long end = std::ftell(file);
    std::fseek(file, position, SEEK_SET);
    return position >= 0 && end > position ? static_cast<uint64_t>(end - position) : 0;
}
