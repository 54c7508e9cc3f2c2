// Writes to the standard output.
#pragma once

#include <string>

struct OutputOptions {
    bool json = false;   // reports as JSON
    bool quiet = false;  // reports in their short form
};

// Writes a report as JSON, in its short form if wanted, or else as full text, with colours on a
// terminal (unless NO_COLOR is set). Throws std::runtime_error when it cannot be written
// completely.
void show(const OutputOptions& options, const std::string& text, const std::string& shortText,
          const std::string& json);

// Writes `text` unchanged. Throws std::runtime_error when it cannot be written completely.
void writeOut(const std::string& text);
