// Messages of a tool about its sources.
#pragma once

#include <string>
#include <vector>

struct MessageList {
    std::vector<std::string> errors;    // the source is rejected
    std::vector<std::string> warnings;  // the source is accepted, but should be checked
};
