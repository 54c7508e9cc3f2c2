#include "tools/updatekey/make/notes_text.h"

#include <algorithm>
#include <cstdio>
#include <map>
#include <stdexcept>
#include <vector>

#include "platform/utf.h"
#include "tools/host/printable.h"
#include "update/key_layout.h"

namespace {

const std::string VERSION_PREFIX = keylayout::VERSION_PREFIX;
const std::string BYTE_ORDER_MARK = "\xEF\xBB\xBF";

// The characters of the bytes 0x80 to 0x9F.
constexpr char16_t WINDOWS_1252[] = {
    0x20AC, 0xFFFD, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0xFFFD, 0x017D, 0xFFFD, 0xFFFD, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0xFFFD, 0x017E, 0x0178};

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

// A character that the device cannot show, and where it stands in the text.
struct Misfit {
    std::size_t line;
    std::size_t column;
    std::u16string character;  // two units for one beyond U+FFFF
};

std::vector<Misfit> misfitsIn(const std::u16string& text) {
    std::vector<Misfit> misfits;
    std::size_t line = 1;
    std::size_t column = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool pair = text[i] >= 0xD800 && text[i] <= 0xDBFF;
        ++column;
        if (text[i] > 0xFF)
            misfits.push_back({line, column, text.substr(i, pair ? 2 : 1)});
        i += pair ? 1 : 0;
        if (text[i] == u'\n') {
            ++line;
            column = 0;
        }
    }
    return misfits;
}

std::string numberOf(const std::u16string& character) {
    const uint32_t code = character.size() == 1 ? character[0]
                                                : 0x10000 + ((character[0] - 0xD800U) << 10) +
                                                      (character[1] - 0xDC00U);
    char number[16];
    std::snprintf(number, sizeof number, "U+%04X", static_cast<unsigned>(code));
    return number;
}

// Throws an error that lists each character outside Latin-1 with its position and a replacement.
void requireLatin1(const std::u16string& text, const std::string& hint) {
    constexpr std::size_t SHOWN = 20;
    const std::vector<Misfit> misfits = misfitsIn(text);
    if (misfits.empty())
        return;
    std::string places;
    for (std::size_t i = 0; i < std::min(SHOWN, misfits.size()); ++i)
        places += "\n  line " + std::to_string(misfits[i].line) + ", column " +
                  std::to_string(misfits[i].column) + ": \"" + host::toUtf8(misfits[i].character) +
                  "\" (" + numberOf(misfits[i].character) + "); " +
                  substituteFor(misfits[i].character[0]);
    if (misfits.size() > SHOWN)
        places += "\n  and " + std::to_string(misfits.size() - SHOWN) + " more";
    throw std::runtime_error(
        "the device can show only Latin-1, but the notes contain other "
        "characters" +
        hint + ":" + places);
}

// Text that is not valid UTF-8 is Latin-1 already, or has characters of Windows-1252 where Latin-1
// has none.
std::string toLatin1(const std::string& text) {
    const bool isUtf8 = host::isUtf8(text);
    std::u16string decoded = host::toUtf16(isUtf8 ? text : latin1ToUtf8(text));
    if (!isUtf8)
        for (char16_t& c : decoded)
            c = c >= 0x80 && c < 0xA0 ? WINDOWS_1252[c - 0x80] : c;
    requireLatin1(decoded, isUtf8 ? "" : " (they are in Windows-1252; save them as UTF-8)");
    return {decoded.begin(), decoded.end()};
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
    if (text.empty())
        throw std::runtime_error("the release notes are empty; write what is new");
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
