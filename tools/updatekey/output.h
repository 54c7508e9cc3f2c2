// The way to the standard output.
#pragma once

#include <string>

struct Arguments;

// Writes the JSON form of a report, its short form when --quiet was given, or else its full text,
// with colours on a terminal (unless NO_COLOR is set). Throws std::runtime_error when it cannot all
// be written.
void show(const Arguments& arguments, const std::string& text, const std::string& shortText,
          const std::string& json);

// Writes `text` as it is. Throws likewise.
void writeOut(const std::string& text);

// A failure of the tool as JSON.
std::string failureJson(const std::string& message);
