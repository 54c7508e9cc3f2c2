// The text of the release notes, made fit for the device.

#include <algorithm>
#include <stdexcept>

#include "platform/posix/utf.h"
#include "tools/updatekey/make.h"

namespace {

const std::string VERSION_PREFIX = "KSTRL Release ";
const std::string BYTE_ORDER_MARK = "\xEF\xBB\xBF";

bool isUtf8(const std::u16string& decoded) {
    return std::none_of(decoded.begin(), decoded.end(),
                        [](char16_t c) { return c >= 0xDC80 && c <= 0xDCFF; });
}

// Bytes that are not UTF-8 are taken to be Latin-1 already.
std::string toLatin1(const std::string& text) {
    const std::u16string decoded = host::toUtf16(text);
    const bool pairsOnly = isUtf8(decoded);
    if (!pairsOnly)
        return text;
    std::string latin1;
    for (const char16_t c : decoded) {
        if (c > 0xFF)
            throw std::runtime_error("the device cannot show \"" + host::toUtf8({&c, 1}) +
                                     "\", which is outside Latin-1: write the notes without it");
        latin1 += static_cast<char>(static_cast<unsigned char>(c));
    }
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
        throw std::runtime_error("a version is one line of text");
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
