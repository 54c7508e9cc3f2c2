#include "tools/guidata/screen_keys.h"

#include "tools/guidata/source_lines.h"

namespace {

// The number of pixels that `digits` spells; nothing for anything but a short row of digits.
std::optional<int> parsePixels(const std::u16string& digits) {
    constexpr std::size_t mostDigits = 5;
    if (digits.empty() || digits.size() > mostDigits)
        return std::nullopt;
    int pixels = 0;
    for (const char16_t digit : digits) {
        if (digit < u'0' || digit > u'9')
            return std::nullopt;
        pixels = pixels * 10 + (digit - u'0');
    }
    return pixels;
}

}  // namespace

std::optional<ScreenKeys> parseScreenKeys(const std::string& source, const std::string& fileName,
                                          std::string& error) {
    const std::optional<std::vector<SourceLine>> lines = sourceLines(source, fileName, error);
    if (!lines)
        return std::nullopt;
    ScreenKeys keys;
    for (const SourceLine& line : *lines) {
        const std::size_t keyEnd = line.text.find(u' ');
        const std::size_t edgeEnd = line.text.find(u' ', keyEnd + 1);
        const bool whole = keyEnd != std::u16string::npos && keyEnd > 0;
        const std::optional<int> edge =
            whole ? parsePixels(line.text.substr(keyEnd + 1, edgeEnd - keyEnd - 1)) : std::nullopt;
        if (!edge) {
            error = at(fileName, line.number) + "expected a key, a blank and a number of pixels";
            return std::nullopt;
        }
        TextUse use;
        use.rightEdge = *edge;
        if (edgeEnd != std::u16string::npos)
            use.suffix = line.text.substr(edgeEnd + 1);
        keys[std::string(line.text.begin(),
                         line.text.begin() + static_cast<std::ptrdiff_t>(keyEnd))] = use;
    }
    return keys;
}
