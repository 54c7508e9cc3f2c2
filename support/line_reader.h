// Reads a narrow text file line by line. On every system it behaves like a text-mode stream of the
// instrument: CR LF counts as one line feed, and Ctrl-Z ends the text.
#pragma once

#include <string>

#include "support/byte_reader.h"

class LineReader {
  public:
    // Opens `path` for reading. The text ends after `limit` bytes.
    LineReader(const std::string& path, std::size_t limit);

    bool isOpen() const { return bytes_.isOpen(); }

    // Reads the next line, without its line feed, into `line`. Returns false when the text ends
    // before a line feed; `line` then holds the rest of the text. At the end of the text, or when
    // the file is not open, `line` is empty.
    bool readLine(std::string& line);

  private:
    int nextCharacter();

    ByteReader bytes_;
};
