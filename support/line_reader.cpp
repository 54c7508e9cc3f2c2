#include "support/line_reader.h"

LineReader::LineReader(const std::string& path, std::size_t limit)
    : bytes_(path, TEXT("rb"), limit) {}

bool LineReader::readLine(std::string& line) {
    line.clear();
    for (int c = nextCharacter(); c != EOF; c = nextCharacter()) {
        if (c == '\n')
            return true;
        line += static_cast<char>(c);
    }
    return false;
}

int LineReader::nextCharacter() {
    constexpr int CTRL_Z = 0x1A;
    if (bytes_.peek() == CTRL_Z)
        return EOF;
    const int c = bytes_.next();
    return c == '\r' && bytes_.peek() == '\n' ? bytes_.next() : c;
}
