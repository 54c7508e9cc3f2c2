// Writes to the standard output.
#pragma once

#include <string>

struct Arguments;

// Writes a report as JSON, in its short form with --quiet, or else as full text, with colours on a
// terminal (unless NO_COLOR is set). Throws std::runtime_error when it cannot be written
// completely.
void show(const Arguments& arguments, const std::string& text, const std::string& shortText,
          const std::string& json);

// Writes `text` unchanged. Throws std::runtime_error when it cannot be written completely.
void writeOut(const std::string& text);

// Formats a failure of the tool as JSON.
std::string failureJson(const std::string& message);
