// Converts release notes to the text that the device reads.

#include <algorithm>
#include <cstdio>
#include <map>
#include <stdexcept>

#include "platform/posix/utf.h"
#include "tools/updatekey/make/make.h"
#include "update/key_layout.h"

namespace {

const std::string VERSION_PREFIX = keylayout::VERSION_PREFIX;
const std::string BYTE_ORDER_MARK = "\xEF\xBB\xBF";

// Returns a replacement for a typographic character that Latin-1 lacks.
std::string substituteFor(char16_t c) {
    static const std::map<char16_t, const char*> SUBSTITUTES = {
        {0x2010, "-"},  {0x2011, "-"},  {0x2013, "-"},   {0x2014, "-"},   {0x2212, "-"},
        {0x2018, "'"},  {0x2019, "'"},  {0x201A, ","},   {0x201C, "\""},  {0x201D, "\""},
        {0x201E, "\""}, {0x2022, "-"},  {0x2026, "..."}, {0x20AC, "EUR"}, {0x2122, "(TM)"},
        {0x2190, "<-"}, {0x2192, "->"}, {0x2264, "<="},  {0x2265, ">="},  {0x2260, "!="},
        {0x0152, "OE"}, {0x0153, "oe"}, {0x2009, " "},   {0x202F, " "},   {0x200B, ""},
    };
    const auto found = SUBSTITUTES.find(c);
    if (found == SUBSTITUTES.end())
        return "leave it out, or write it in other words";
    return *found->second == '\0' ? "leave it out" : std::string("write ") + found->second;
}

// Lists every character outside Latin-1 with its position and a replacement.
[[noreturn]] void refuse(const std::u16string& text) {
    constexpr std::size_t SHOWN = 20;
    std::string places;
    std::size_t count = 0;
    std::size_t line = 1;
    std::size_t column = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char16_t c = text[i];
        const std::size_t units = c >= 0xD800 && c <= 0xDBFF ? 2 : 1;
        ++column;
        if (c > 0xFF && ++count <= SHOWN) {
            const uint32_t code =
                units == 1 ? c : 0x10000 + ((c - 0xD800U) << 10) + (text[i + 1] - 0xDC00U);
            char number[16];
            std::snprintf(number, sizeof number, "U+%04X", static_cast<unsigned>(code));
            places += "\n  line " + std::to_string(line) + ", column " + std::to_string(column) +
                      ": \"" + host::toUtf8(text.substr(i, units)) + "\" (" + number + "); " +
                      substituteFor(c);
        }
        i += units - 1;
        if (c == u'\n') {
            ++line;
            column = 0;
        }
    }
    if (count > SHOWN)
        places += "\n  and " + std::to_string(count - SHOWN) + " more";
    throw std::runtime_error(
        "the device can show only Latin-1, but the notes contain other characters:" + places);
}

// Text that is not valid UTF-8 is assumed to be Latin-1 already.
std::string toLatin1(const std::string& text) {
    if (!host::isUtf8(text))
        return text;
    const std::u16string decoded = host::toUtf16(text);
    if (std::any_of(decoded.begin(), decoded.end(), [](char16_t c) { return c > 0xFF; }))
        refuse(decoded);
    std::string latin1;
    for (const char16_t c : decoded)
        latin1 += static_cast<char>(static_cast<unsigned char>(c));
    return latin1;
}

std::string withoutCarriageReturns(const std::string& text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i)
        if (text.compare(i, 2, "\r\n") != 0)
            result += text[i];
    return result;
}

}  // namespace

std::string composeNotes(const std::string& text, const std::string& version) {
    const bool oneLine = std::none_of(version.begin(), version.end(),
                                      [](char c) { return static_cast<unsigned char>(c) < 0x20; });
    if (version.empty() || !oneLine)
        throw std::runtime_error("the version must be one line of text");
    const std::size_t start = text.compare(0, 3, BYTE_ORDER_MARK) == 0 ? 3 : 0;
    std::string notes = withoutCarriageReturns(toLatin1(text.substr(start)));
    const std::string first = VERSION_PREFIX + toLatin1(version);
    const std::string stated = notes.substr(0, notes.find('\n'));
    if (stated.find(VERSION_PREFIX) == 0 && stated != first)
        throw std::runtime_error("the notes begin with \"" + stated + "\", which is not version " +
                                 version);
    if (stated != first)
        notes.insert(0, first + "\n");
    if (notes.back() != '\n')
        notes += '\n';
    return notes;
}
