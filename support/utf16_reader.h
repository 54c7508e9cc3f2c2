// Reads a UTF-16LE text file line by line: two bytes a character, no line-end translation.
#pragma once

#include <string>

#include "support/byte_reader.h"

class Utf16Reader {
  public:
    // Longer lines are returned in pieces of this many characters.
    static constexpr std::size_t MAX_LINE = 511;

    // Opens `path` for reading. A byte-order mark at its start is skipped. The text ends after
    // `limit` bytes.
    Utf16Reader(const std::string& path, std::size_t limit);

    bool isOpen() const { return bytes_.isOpen(); }

    // Reads up to and including the next line feed, at most MAX_LINE characters, into `line`; the
    // next call returns the rest of a longer line. Returns false at the end of the file, on a read
    // error, and when the file is not open. Half a character at the end is ignored.
    bool readLine(WideString& line);

  private:
    bool readCharacter(WCHAR& character);

    ByteReader bytes_;
    bool atStart_ = true;
};
