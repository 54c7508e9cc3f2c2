// The registry of the simulated device: the file "registry.reg" in its folder, in the text form
// that registry editors export.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/posix/registry_value.h"

namespace host {

// The lines of the file, which have their effect in their order, as when a registry editor takes
// the file in: a later value replaces an earlier one, "NAME"=- and [-KEY] remove. What cannot be
// read has no effect. Keys and value names are compared without regard to the case of ASCII
// letters.
class Registry {
  public:
    bool hasKey(std::u16string_view key) const;
    const RegistryValue* find(std::u16string_view key, std::u16string_view name) const;

    // Writes the value's line anew, or adds one to the key, which is added too where it is missing.
    // All other lines stay as they are, remarks and what cannot be read among them.
    void set(std::u16string_view key, std::u16string_view name, RegistryValue value);

    // The text is UTF-8, or UTF-16 with a byte-order mark; toText gives it back in the same
    // encoding.
    static Registry fromText(std::string_view bytes);
    std::string toText() const;

  private:
    enum class Effect { none, key, noKey, value, noValue };
    struct Line {
        std::u16string text;  // with its line end, and with the lines on which it goes on
        Effect effect = Effect::none;
        std::u16string key;
        std::u16string name;
        RegistryValue value;
        std::u16string remark;  // behind the value
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

// An absent file is an empty registry. Returns 0, or the error number with which the file that is
// there cannot be read.
DWORD loadRegistry(Registry& registry);

// Replaces the file as a whole. Returns 0 or the error number.
DWORD saveRegistry(const Registry& registry);

}  // namespace host
