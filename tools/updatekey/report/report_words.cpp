#include "tools/updatekey/report/report_words.h"

#include <cstdio>

#include "support/file_util.h"
#include "tools/host/printable.h"

std::string sizeWords(uint64_t bytes) {
    const std::string rounded = sizeText(static_cast<int64_t>(bytes));
    const std::string exact = std::to_string(bytes) + " bytes";
    return rounded == exact ? exact : rounded + " (" + exact + ")";
}

std::string countWords(std::size_t count, const std::string& noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

std::string filesWords(std::size_t files, uint64_t bytes) {
    return countWords(files, "file") + ", " + sizeWords(bytes);
}

std::string secondsWords(double seconds) {
    char text[40];
    std::snprintf(text, sizeof text, "%.2f seconds", seconds);
    return text;
}

std::string padded(const std::string& text, std::size_t width) {
    return text + std::string(text.size() < width ? width - text.size() : 1, ' ');
}

std::string linesText(const std::string& start, const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines)
        text += start + printable(line) + "\n";
    return text;
}

std::string changesText(const std::vector<FileChange>& changes) {
    std::string text;
    for (const FileChange& change : changes) {
        text += "  " + padded(nameOf(change.kind), 9) + printable(change.path) + "  ";
        text += change.kind == FileChange::Kind::Added ? "" : sizeWords(change.before);
        text += change.kind == FileChange::Kind::Changed ? " -> " : "";
        text += change.kind == FileChange::Kind::Gone ? "" : sizeWords(change.after);
        text += "\n";
    }
    return text;
}
