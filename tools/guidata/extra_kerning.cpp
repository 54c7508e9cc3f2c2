#include "tools/guidata/extra_kerning.h"

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <optional>
#include <stdexcept>

#include "tools/guidata/source_lines.h"
#include "tools/guidata/text_encoding.h"

namespace {

constexpr int UNITS_PER_EM = 1000;
constexpr std::size_t AMOUNT_START = 3;  // after the two characters and the separator

std::optional<int> parseAmount(const std::u16string& text) {
    std::string digits;
    for (const char16_t character : text)
        digits += character < 0x80 ? static_cast<char>(character) : '?';
    int amount = 0;
    const char* const end = digits.data() + digits.size();
    const std::from_chars_result result = std::from_chars(digits.data(), end, amount);
    if (result.ec != std::errc() || result.ptr != end || std::abs(amount) > UNITS_PER_EM)
        return std::nullopt;
    return amount;
}

}  // namespace

ExtraKerning parseExtraKerning(const std::string& source, const std::string& fileName) {
    ExtraKerning pairs;
    for (const SourceLine& line : sourceLines(source, fileName)) {
        const bool whole = line.text.size() > AMOUNT_START;
        const std::optional<int> amount =
            whole ? parseAmount(line.text.substr(AMOUNT_START)) : std::nullopt;
        if (!amount)
            throw std::runtime_error(
                at(fileName, line.number) +
                "expected two characters, a blank and a number from -1000 to 1000");
        pairs[{line.text[0], line.text[1]}] = *amount;
    }
    return pairs;
}

KerningTable scaledKerning(const ExtraKerning& pairs, double emSize) {
    KerningTable scaled;
    for (const auto& [pair, amount] : pairs)
        scaled[pair] = static_cast<int16_t>(std::lround(amount * emSize / UNITS_PER_EM));
    return scaled;
}

std::string encodeKernFile(const KerningTable& pairs) {
    std::u16string text = u"# Kerning pairs in pixels, beside those of the font.\r\n";
    for (const auto& [pair, amount] : pairs) {
        text += static_cast<char16_t>(pair.first);
        text += static_cast<char16_t>(pair.second);
        text += u' ';
        for (const char digit : std::to_string(amount))
            text += static_cast<char16_t>(digit);
        text += u"\r\n";
    }
    return utf16LittleEndian(text);
}
