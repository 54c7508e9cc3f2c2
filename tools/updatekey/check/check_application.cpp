// Checks that the application is a complete program for the instrument's processor.

#include <cstdint>

#include "tools/updatekey/check/checks.h"

namespace {

// A Windows program. Its header consists of little-endian numbers.
class ProgramFile {
  public:
    explicit ProgramFile(const std::string& bytes) : bytes_(bytes), start_(number(0x3C, 4)) {}

    bool isWindowsProgram() const { return has(0, "MZ") && has(start_, {"PE\0\0", 4}); }

    // Whether all sections that the header lists are in the file.
    bool isComplete() const {
        constexpr std::size_t FILE_HEADER = 24;
        constexpr std::size_t ENTRY_SIZE = 40;
        std::size_t entry = start_ + FILE_HEADER + number(start_ + 20, 2);
        for (uint32_t left = number(start_ + 6, 2); left > 0; --left, entry += ENTRY_SIZE)
            if (uint64_t{number(entry + 16, 4)} + number(entry + 20, 4) > bytes_.size())
                return false;
        return true;
    }

    std::string machine() const {
        switch (number(start_ + 4, 2)) {
            case 0x1C0:
            case 0x1C2:
            case 0x1C4:
                return "arm";
            case 0x14C:
                return "x86";
            case 0x8664:
                return "x64";
            default:
                return "another processor";
        }
    }

  private:
    // Bytes after the end of the file are 0.
    uint32_t number(std::size_t at, std::size_t size) const {
        uint32_t value = 0;
        for (std::size_t i = size; i-- > 0;)
            value = (value << 8) |
                    (at + i < bytes_.size() ? static_cast<unsigned char>(bytes_[at + i]) : 0U);
        return value;
    }
    bool has(std::size_t at, const std::string& text) const {
        return at < bytes_.size() && bytes_.compare(at, text.size(), text) == 0;
    }

    const std::string& bytes_;
    const std::size_t start_;
};

}  // namespace

void checkApplication(KeyUnderCheck& key) {
    const TreeEntry* const entry = key.find(keypaths::PROGRAM);
    const std::string& machine = key.options.machine;
    if (entry == nullptr || entry->size == 0 || machine == "any")
        return;
    const std::string bytes = key.read(keypaths::PROGRAM);
    const ProgramFile program(bytes);
    if (!program.isWindowsProgram())
        key.add("application-damaged", keypaths::PROGRAM,
                "is not a Windows program; use the one that the application's build made "
                "(--machine any accepts this one, for a simulated instrument)");
    else if (!program.isComplete())
        key.add("application-damaged", keypaths::PROGRAM, "is truncated; copy it again");
    else if (program.machine() != machine)
        key.add("application-machine", keypaths::PROGRAM,
                "is built for " + program.machine() + ", not for " + machine +
                    "; build it for the instrument, or set --machine");
}
