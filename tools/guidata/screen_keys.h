// The keys that the screen looks up, with what it does with their texts.
//
// The source is UTF-8 text, one key a line, followed by a blank and the x in pixels that the text
// must not go beyond. A second blank and whatever follows it stand for what the screen puts behind
// the text.
#pragma once

#include <map>
#include <optional>
#include <string>

struct TextUse {
    int rightEdge = 0;
    std::u16string suffix;
};

using ScreenKeys = std::map<std::string, TextUse>;

// The keys of a source text. Nothing, with `error` naming file and line, when it is malformed.
std::optional<ScreenKeys> parseScreenKeys(const std::string& source, const std::string& fileName,
                                          std::string& error);
