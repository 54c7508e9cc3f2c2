// A registry value and its text form: "dword:0000001f", "hex:01,ff", "hex(2):41,00" with the type
// in brackets, or text in quotes.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/posix/win32_api.h"

namespace host {

struct RegistryValue {
    DWORD type = 0;
    std::vector<BYTE> data;
};

// Parses a quoted text at the start of `line`, appends it to `text` and removes it from `line`.
// Returns false when there is none.
bool takeQuoted(std::u16string_view& line, std::u16string& text);

// Returns `text` in quotes, as takeQuoted parses it.
std::u16string quoted(std::u16string_view text);

// Parses the text form of a value. Returns false when it is none.
bool readValue(std::u16string_view text, RegistryValue& value);

// Returns the text form of a value, as readValue parses it.
std::u16string valueText(const RegistryValue& value);

}  // namespace host
