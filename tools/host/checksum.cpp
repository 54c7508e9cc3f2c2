#include "tools/host/checksum.h"

std::string Checksum::textOf(const unsigned char (&digest)[SIZE]) {
    constexpr const char* DIGITS = "0123456789abcdef";
    std::string text;
    for (const unsigned char byte : digest) {
        text += DIGITS[byte >> 4];
        text += DIGITS[byte & 0xF];
    }
    return text;
}
