// The registry of the simulated device: the file "registry.reg" in its folder, in the text form
// that registry editors export.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/posix/win32_api.h"

namespace host {

struct RegistryValue {
    DWORD type = 0;
    std::vector<BYTE> data;
};

// Keys and value names are compared without regard to the case of ASCII letters.
class Registry {
  public:
    bool hasKey(std::u16string_view key) const;
    const RegistryValue* find(std::u16string_view key, std::u16string_view name) const;
    void addKey(std::u16string_view key);
    void set(std::u16string_view key, std::u16string_view name, RegistryValue value);

    // Reads the text form, UTF-8 or UTF-16LE with a byte-order mark; what it cannot read it passes
    // over. toText gives it back in the same encoding.
    static Registry fromText(std::string_view bytes);
    std::string toText() const;

  private:
    struct Named {
        std::u16string name;
        RegistryValue value;
    };
    struct Key {
        std::u16string path;
        std::map<std::u16string, Named> values;
    };
    void addLine(std::u16string_view line, std::u16string& key);

    std::map<std::u16string, Key> keys_;
    bool utf16_ = false;
};

// An absent file is an empty registry.
Registry loadRegistry();

// Replaces the file as a whole. Returns 0 or the error number.
DWORD saveRegistry(const Registry& registry);

}  // namespace host
