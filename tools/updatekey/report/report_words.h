// Phrases used by several reports.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tools/host/file_changes.h"

// "3 files", "1 file".
std::string countWords(std::size_t count, const std::string& noun);

// "2MB (2097152 bytes)".
std::string sizeWords(uint64_t bytes);

// "3 files, 2MB (2097152 bytes)".
std::string filesWords(std::size_t files, uint64_t bytes);

// "3.10 seconds".
std::string secondsWords(double seconds);

// Appends blanks to a text, up to a width and at least one.
std::string padded(const std::string& text, std::size_t width);

// A line per text: "  | text".
std::string linesText(const std::string& start, const std::vector<std::string>& lines);

// A line per file: "  changed  KSTRL/version.txt  7 bytes -> 8 bytes".
std::string changesText(const std::vector<FileChange>& changes);
