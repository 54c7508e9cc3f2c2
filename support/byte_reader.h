// Reads a file of the device byte by byte, up to a limit.
#pragma once

#include <string>

#include "support/open_file.h"

class ByteReader {
  public:
    // Opens `path` in a reading mode of openFile. Other programs may read and write the file
    // meanwhile.
    ByteReader(const std::string& path, LPCWSTR mode, std::size_t limit);

    bool isOpen() const { return file_ != nullptr; }

    // Return the next byte, or EOF at the end of the file, after a read error, and after `limit`
    // bytes. A file that has more is reported in the log. peek leaves the byte in the file.
    int next();
    int peek();

  private:
    FilePointer file_;
    std::string path_;
    std::size_t left_;
};
