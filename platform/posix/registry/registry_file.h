// The registry of the simulated device: the file "registry.reg" in its folder, in the text format
// that registry editors export.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/posix/registry/registry_value.h"

namespace host {

// Keys and value names are compared without regard to the case of ASCII letters. A later value
// replaces an earlier one.
class Registry {
  public:
    // A key also exists as the parent of another key.
    bool hasKey(std::u16string_view key) const;
    const RegistryValue* find(std::u16string_view key, std::u16string_view name) const;

    // Adds the key when it is missing.
    void set(std::u16string_view key, std::u16string_view name, RegistryValue value);

    // Parses UTF-8, Latin-1, or UTF-16LE with a byte-order mark. Lines that cannot be parsed have
    // no effect.
    static Registry fromText(std::string_view bytes);

    // Returns the keys and values as text, in the encoding that was parsed; Latin-1 becomes UTF-8.
    std::string toText() const;

    // The number of the first line that cannot be parsed; 0 when there is none.
    std::size_t unknownLine() const { return unknownLine_; }

    // Whether toText leaves out nothing of the parsed text: no comment and no unknown line.
    bool isComplete() const { return unknownLine_ == 0 && !hasComments_; }

  private:
    struct Value {
        std::u16string name;
        RegistryValue value;
    };
    struct Key {
        std::u16string path;
        std::vector<Value> values;
    };

    Key* findKey(std::u16string_view path);
    bool addLine(std::u16string_view line, std::u16string& key);

    std::vector<Key> keys_;
    std::string mark_;  // the byte-order mark
    std::size_t unknownLine_ = 0;
    bool hasComments_ = false;
};

// A missing file is an empty registry. Returns 0, or the error number when an existing file cannot
// be read. Only a regular file is read, without waiting.
DWORD loadRegistry(Registry& registry);

// Replaces the file atomically. Returns 0 or the error number: 5 when comments or lines that cannot
// be parsed would be lost.
DWORD saveRegistry(const Registry& registry);

}  // namespace host
