// Runs the well-known programs of the host that do a part of the work: mtools, dosfstools, sfdisk.
#pragma once

#include <string>
#include <vector>

// Runs a program to its end with `input` on its standard input and returns what it printed on its
// standard output. Its locale is UTF-8 and its clock UTC, so that it does the same everywhere; the
// folders of the system's administration are searched for it too.
// Throws std::runtime_error, with what it said, when it cannot be started or ends with an error.
std::string runExternalProgram(const std::vector<std::string>& arguments,
                               const std::string& input = {});
