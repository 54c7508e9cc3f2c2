#include "support/line_reader.h"

#include "platform/win32.h"
#include "support/text.h"

LineReader::LineReader(const std::string& path) : file_(_wfopen(widen(path).c_str(), TEXT("rb"))) {}

LineReader::~LineReader() {
    if (file_ != nullptr)
        std::fclose(file_);
}

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
    int c = std::fgetc(file_);
    if (c == '\r') {
        const int next = std::fgetc(file_);
        if (next == '\n')
            return next;
        std::ungetc(next, file_);
    }
    if (c == CTRL_Z) {
        std::ungetc(c, file_);
        c = EOF;
    }
    return c;
}
