// What a tool has to say about its sources.
#pragma once

#include <string>
#include <vector>

struct MessageList {
    std::vector<std::string> errors;    // the source is refused
    std::vector<std::string> warnings;  // it is taken, but should be looked at
};
