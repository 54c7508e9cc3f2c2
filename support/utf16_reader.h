// Reads a UTF-16LE text file line by line: two bytes a character, no line-end translation.
#pragma once

#include <cstdio>
#include <string>

#include "platform/win32.h"

class Utf16Reader {
  public:
    // A line is handed out in pieces of at most this many characters.
    static constexpr std::size_t MAX_LINE = 511;

    // Opens `path` for reading and passes over a leading byte-order mark.
    explicit Utf16Reader(const std::string& path);
    Utf16Reader(const Utf16Reader&) = delete;
    Utf16Reader& operator=(const Utf16Reader&) = delete;
    ~Utf16Reader();

    bool isOpen() const { return file_ != nullptr; }

    // Reads up to and including the next line feed, MAX_LINE characters at most, into `line`; what
    // is left of a longer line comes with the next call. Returns false at the end of the file, on a
    // read error, and when the file is not open. Half a character at the end is dropped.
    bool readLine(WideString& line);

  private:
    bool readCharacter(WCHAR& character);

    std::FILE* file_;
};
