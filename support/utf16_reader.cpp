#include "support/utf16_reader.h"

#include <utility>

Utf16Reader::Utf16Reader(const std::string& path, std::size_t limit)
    : bytes_(path, TEXT("rb,ccs=UTF-16LE"), limit) {}

bool Utf16Reader::readLine(WideString& line) {
    constexpr WCHAR BYTE_ORDER_MARK = 0xFEFF;
    line.clear();
    WCHAR character{};
    while (line.size() < MAX_LINE && readCharacter(character)) {
        if (std::exchange(atStart_, false) && character == BYTE_ORDER_MARK)
            continue;
        line += character;
        if (character == TEXT('\n'))
            break;
    }
    return !line.empty();
}

bool Utf16Reader::readCharacter(WCHAR& character) {
    const int low = bytes_.next();
    const int high = bytes_.next();
    if (high == EOF)
        return false;
    character = static_cast<WCHAR>(low | (high << 8));
    return true;
}
