#include "tools/host/printable.h"

#include <cstdio>

#include "platform/utf.h"

std::string printable(const std::string& text) {
    std::u16string shown;
    char16_t before = 0;
    for (const char16_t unit : host::toUtf16(text)) {
        // The second half of a surrogate pair does not stand for a byte.
        const bool pair = before >= 0xD800 && before <= 0xDBFF;
        before = unit;
        const bool strayByte = !pair && unit >= 0xDC80 && unit <= 0xDCFF;
        const bool control = unit < 0x20 || (unit >= 0x7F && unit < 0xA0);
        if (!strayByte && !control) {
            shown += unit;
            continue;
        }
        char code[8];
        std::snprintf(code, sizeof code, "\\x%02x", static_cast<unsigned>(unit & 0xFF));
        shown += host::toUtf16(code);
    }
    return host::toUtf8(shown);
}

std::string latin1ToUtf8(const std::string& text) {
    std::u16string wide;
    for (const char c : text)
        wide += static_cast<unsigned char>(c);
    return host::toUtf8(wide);
}
