// Reads a narrow text file line by line, as a text-mode stream of the instrument does, on every
// system: CR LF counts as one line feed, and a Ctrl-Z ends the text.
#pragma once

#include <cstdio>
#include <string>

class LineReader {
  public:
    // Opens `path` for reading. Other readers and writers are not kept out.
    explicit LineReader(const std::string& path);
    LineReader(const LineReader&) = delete;
    LineReader& operator=(const LineReader&) = delete;
    ~LineReader();

    bool isOpen() const { return file_ != nullptr; }

    // Reads the next line, without its line feed, into `line`. Returns false when the text ended
    // before a line feed; `line` then holds what stood there, empty at the end of the text or when
    // the file is not open.
    bool readLine(std::string& line);

  private:
    int nextCharacter();

    std::FILE* file_;
};
