// The registry of the simulated device: the file "registry.reg" in its folder, in the text format
// that registry editors export.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/posix/registry/registry_value.h"

namespace host {

// The lines of the file, applied in order as a registry editor imports them: a later value replaces
// an earlier one, and "NAME"=- and [-KEY] remove. Lines that cannot be parsed have no effect. Keys
// and value names are compared without regard to the case of ASCII letters.
class Registry {
  public:
    bool hasKey(std::u16string_view key) const;
    const RegistryValue* find(std::u16string_view key, std::u16string_view name) const;

    // Rewrites the value's line, or adds one to the key; a missing key is added too. All other
    // lines stay unchanged, including comments and lines that cannot be parsed.
    void set(std::u16string_view key, std::u16string_view name, RegistryValue value);

    // The file is UTF-8, or UTF-16 with a byte-order mark. toText writes the same encoding.
    static Registry fromText(std::string_view bytes);
    std::string toText() const;

  private:
    enum class Effect { None, Key, NoKey, Value, NoValue };
    struct Line {
        std::u16string text;  // with its continuation lines and line end
        Effect effect = Effect::None;
        std::u16string key;
        std::u16string name;
        RegistryValue value;
        std::u16string remark;  // the comment after the value
    };
    static constexpr std::size_t NONE = static_cast<std::size_t>(-1);

    template <class Fits>
    std::size_t lastLine(std::u16string_view key, Fits fits) const;
    std::size_t valueLine(std::u16string_view key, std::u16string_view name) const;
    void add(std::size_t at, Line line);
    void addRead(std::u16string_view text, std::u16string_view joined, std::u16string& key);

    std::vector<Line> lines_;
    std::string mark_;  // the byte-order mark
};

// A missing file is an empty registry. Returns 0, or the error number when an existing file cannot
// be read.
DWORD loadRegistry(Registry& registry);

// Replaces the file atomically. Returns 0 or the error number.
DWORD saveRegistry(const Registry& registry);

}  // namespace host
