// Runs other programs of this computer: mtools, dosfstools and sfdisk.
#pragma once

#include <string>
#include <vector>

// Runs a program with `input` as its standard input and returns its standard output. Its locale is
// UTF-8 and its time zone UTC, so that results do not depend on this computer's settings. /usr/sbin
// and /sbin are searched too. Throws std::runtime_error, with the program's message, when it cannot
// be started or fails.
std::string runExternalProgram(const std::vector<std::string>& arguments,
                               const std::string& input = {});
