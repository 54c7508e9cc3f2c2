// The lines of a UTF-8 source file that carry something.
#pragma once

#include <optional>
#include <string>
#include <vector>

struct SourceLine {
    int number;           // from 1
    std::u16string text;  // without its line end
};

// "file:line: ", the beginning of every message about a line.
std::string at(const std::string& fileName, int line);

// All lines of `source` but empty ones and those that begin with "#". Lines end with LF or CR LF.
// Nothing, with `error` naming file and line, when the text is not UTF-8 or holds a control
// character other than a tab.
std::optional<std::vector<SourceLine>> sourceLines(const std::string& source,
                                                   const std::string& fileName, std::string& error);
