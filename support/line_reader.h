// Reads a narrow text file line by line. On every system it behaves like a text-mode stream of the
// instrument: CR LF counts as one line feed, and Ctrl-Z ends the text.
#pragma once

#include <string>

#include "support/open_file.h"

class LineReader {
  public:
    // Opens `path` for reading; other programs may read and write the file meanwhile.
    explicit LineReader(const std::string& path);

    bool isOpen() const { return file_ != nullptr; }

    // Reads the next line, without its line feed, into `line`. Returns false when the text ends
    // before a line feed; `line` then holds the rest of the text. At the end of the text, or when
    // the file is not open, `line` is empty.
    bool readLine(std::string& line);

  private:
    int nextCharacter();

    FilePointer file_;
};
