#include "support/line_reader.h"

LineReader::LineReader(const std::string& path) : file_(openFile(path, TEXT("rb"))) {}

bool LineReader::readLine(std::string& line) {
    line.clear();
    if (file_ == nullptr)
        return false;
    for (int c = nextCharacter(); c != EOF; c = nextCharacter()) {
        if (c == '\n')
            return true;
        line += static_cast<char>(c);
    }
    return false;
}

int LineReader::nextCharacter() {
    constexpr int CTRL_Z = 0x1A;
    int c = std::fgetc(file_.get());
    if (c == '\r') {
        const int next = std::fgetc(file_.get());
        if (next == '\n')
            return next;
        std::ungetc(next, file_.get());
    }
    if (c == CTRL_Z) {
        std::ungetc(c, file_.get());
        c = EOF;
    }
    return c;
}
