#include "tools/updatekey/values.h"

#include <algorithm>
#include <cstdlib>
#include <sstream>
#include <stdexcept>
#include <utility>

#include "platform/utf.h"
#include "support/languages.h"
#include "tools/diagnosis/finding.h"

namespace {

// Parses digits only. Returns -1 for any other text and on overflow.
int64_t parseDigits(const std::string& text) {
    constexpr std::size_t MOST_DIGITS = 18;
    if (text.empty() || text.size() > MOST_DIGITS ||
        text.find_first_not_of("0123456789") != std::string::npos)
        return -1;
    return std::strtoll(text.c_str(), nullptr, 10);
}

}  // namespace

uint64_t parseSize(const std::string& text) {
    constexpr std::pair<const char*, int> UNITS[] = {{"", 0}, {"kb", 10}, {"mb", 20}, {"gb", 30}};
    constexpr int64_t MOST_BYTES = int64_t{1} << 60;
    const std::size_t end = std::min(text.find_first_not_of("0123456789"), text.size());
    const int64_t number = parseDigits(text.substr(0, end));
    const std::string unit = host::foldCase(text.substr(end));
    for (const auto& [name, shift] : UNITS)
        if (unit == name && number > 0 && number <= MOST_BYTES >> shift)
            return static_cast<uint64_t>(number) << shift;
    throw std::runtime_error("\"" + text +
                             "\" is not a size; give a number of bytes, or a number with the unit "
                             "kb, mb or gb");
}

std::vector<int32_t> parseLanguages(const std::string& text) {
    std::vector<int32_t> numbers;
    std::istringstream stream(text);
    for (std::string word; std::getline(stream, word, ',');) {
        const auto isMeant = [&](const Language& language) {
            return host::foldCase(word) == language.suffix ||
                   word == std::to_string(language.number);
        };
        const auto* const language =
            std::find_if(std::begin(LANGUAGES), std::end(LANGUAGES), isMeant);
        if (language == std::end(LANGUAGES)) {
            std::string all;
            for (const Language& known : LANGUAGES)
                all += (all.empty() ? "" : ", ") + std::string(known.suffix);
            throw std::runtime_error("\"" + word + "\" is not a language; the languages are " +
                                     all + ", or their numbers from 0");
        }
        numbers.push_back(language->number);
    }
    if (numbers.empty())
        throw std::runtime_error("give at least one language");
    return numbers;
}

std::set<std::string> parseFindings(const std::string& text) {
    std::set<std::string> codes;
    std::istringstream stream(text);
    for (std::string code; std::getline(stream, code, ',');) {
        if (!isFindingCode(code))
            throw std::runtime_error("\"" + code +
                                     "\" is not the code of a finding; the code stands in brackets "
                                     "at the start of each");
        codes.insert(code);
    }
    return codes;
}

int64_t sourceDateEpoch() {
    const char* const text = std::getenv("SOURCE_DATE_EPOCH");
    if (text == nullptr)
        return -1;
    const int64_t seconds = parseDigits(text);
    if (seconds < 0)
        throw std::runtime_error("SOURCE_DATE_EPOCH is \"" + std::string(text) +
                                 "\", which is not a number of seconds since 1970");
    return seconds;
}
