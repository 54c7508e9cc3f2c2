// The significant lines of a UTF-8 source file.
#pragma once

#include <string>
#include <vector>

struct SourceLine {
    int number;           // from 1
    std::u16string text;  // without the line end
};

// Returns "file:line: ", the beginning of every message about a line.
std::string at(const std::string& fileName, int line);

// Returns all lines of `source` except empty ones and those that begin with "#". Lines end with LF
// or CR LF. Throws std::runtime_error, naming file and line, when the text is not UTF-8 or contains
// a control character other than a tab.
std::vector<SourceLine> sourceLines(const std::string& source, const std::string& fileName);
