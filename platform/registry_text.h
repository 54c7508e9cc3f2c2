// The registry of a simulated or returned instrument as text, in the format that registry editors
// export.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>

#include "platform/win32.h"

namespace host {

// The file of the registry in a device folder.
constexpr const char* REGISTRY_FILE = "registry.reg";

struct RegistryValue {
    DWORD type = 0;
    std::string data;
};

// Compares names of keys and values without regard to the case of ASCII letters.
struct IgnoringCase {
    bool operator()(const std::string& one, const std::string& other) const;
};

// Names are in UTF-8. The default value of a key has an empty name.
struct Registry {
    using Values = std::map<std::string, RegistryValue, IgnoringCase>;

    std::map<std::string, Values, IgnoringCase> keys;  // by path
    std::string mark;                                  // the byte-order mark of the text
    std::size_t lostLine = 0;  // the number of the first line that toText leaves out; 0: none

    // A key also exists as the parent of another key.
    bool hasKey(const std::string& path) const;
    // Returns null when there is no such value.
    const RegistryValue* find(const std::string& path, const std::string& name) const;

    // Parses UTF-8, or UTF-16LE with a byte-order mark. A later value replaces an earlier one.
    // Comments, and lines that cannot be parsed, have no effect.
    static Registry fromText(std::string_view bytes);

    // Returns the keys and values, sorted by name, in the encoding that was parsed.
    std::string toText() const;
};

}  // namespace host
