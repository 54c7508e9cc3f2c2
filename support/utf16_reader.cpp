#include "support/utf16_reader.h"

Utf16Reader::Utf16Reader(const std::string& path) : file_(openFile(path, TEXT("rb,ccs=UTF-16LE"))) {
    constexpr WCHAR BYTE_ORDER_MARK = 0xFEFF;
    WCHAR first{};
    if (file_ != nullptr && !(readCharacter(first) && first == BYTE_ORDER_MARK))
        std::rewind(file_.get());
}

bool Utf16Reader::readLine(WideString& line) {
    line.clear();
    WCHAR character{};
    while (line.size() < MAX_LINE && readCharacter(character)) {
        line += character;
        if (character == TEXT('\n'))
            break;
    }
    return !line.empty();
}

bool Utf16Reader::readCharacter(WCHAR& character) {
    unsigned char bytes[2];
    if (file_ == nullptr || std::fread(bytes, 1, sizeof bytes, file_.get()) != sizeof bytes)
        return false;
    character = static_cast<WCHAR>(bytes[0] | (bytes[1] << 8));
    return true;
}
