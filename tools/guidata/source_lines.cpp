#include "tools/guidata/source_lines.h"

#include <algorithm>
#include <stdexcept>

#include "tools/guidata/text_encoding.h"

namespace {

bool isControl(char16_t character) {
    return (character < 0x20 && character != u'\t') || (character >= 0x7F && character < 0xA0);
}

}  // namespace

std::string at(const std::string& fileName, int line) {
    return fileName + ":" + std::to_string(line) + ": ";
}

std::vector<SourceLine> sourceLines(const std::string& source, const std::string& fileName) {
    std::vector<SourceLine> lines;
    int number = 0;
    for (std::size_t start = 0; start < source.size();) {
        const std::size_t end = std::min(source.find('\n', start), source.size());
        std::string bytes = source.substr(start, end - start);
        start = end + 1;
        ++number;
        if (!bytes.empty() && bytes.back() == '\r')
            bytes.pop_back();
        const std::optional<std::u16string> text = utf16FromUtf8(bytes);
        if (!text)
            throw std::runtime_error(at(fileName, number) + "the line is not UTF-8 text");
        if (std::any_of(text->begin(), text->end(), isControl))
            throw std::runtime_error(at(fileName, number) +
                                     "the line contains a control character");
        if (!text->empty() && text->front() != u'#')
            lines.push_back({number, *text});
    }
    return lines;
}
