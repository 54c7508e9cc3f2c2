// Converts release notes to the text that the device reads.
#pragma once

#include <string>

// Returns the release notes as the device reads them: Latin-1, line feeds, the version in the first
// line. Throws std::runtime_error for a version that is not one line of Latin-1, for notes that
// are empty or contain another version, and for characters outside Latin-1.
std::string composeNotes(const std::string& text, const std::string& version);
