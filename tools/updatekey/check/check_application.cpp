// Checks that the application is a complete program for the instrument's processor.

#include <cstdint>

#include "tools/updatekey/check/checks.h"
#include "tools/updatekey/check/key_paths.h"

namespace {

// Reads little-endian numbers of a program's header; bytes after the end of the file are 0.
class Header {
  public:
    explicit Header(const std::string& bytes) : bytes_(bytes) {}

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

  private:
    const std::string& bytes_;
};

std::string machineOf(uint32_t number) {
    switch (number) {
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

// Returns the end, in the file, of the last section that the header lists.
uint64_t lastByte(const Header& header, std::size_t start) {
    constexpr std::size_t FILE_HEADER = 24;
    constexpr std::size_t ENTRY_SIZE = 40;
    const std::size_t sections = start + FILE_HEADER + header.number(start + 20, 2);
    uint64_t end = 0;
    for (uint32_t i = 0; i < header.number(start + 6, 2); ++i) {
        const std::size_t entry = sections + i * ENTRY_SIZE;
        end = std::max(end, uint64_t{header.number(entry + 16, 4)} + header.number(entry + 20, 4));
    }
    return end;
}

}  // namespace

void checkApplication(const KeyUnderCheck& key, CheckReport& report) {
    const TreeEntry* const entry = key.find(keypaths::PROGRAM);
    const std::string& machine = key.options.machine;
    if (entry == nullptr || entry->size == 0 || machine == "any")
        return;
    const auto damaged = [&](const std::string& text) {
        addFinding(report.findings, "application-damaged", keypaths::PROGRAM, text);
    };
    const std::string bytes = key.read(keypaths::PROGRAM);
    const Header header(bytes);
    const std::size_t start = header.number(0x3C, 4);
    if (!header.has(0, "MZ") || !header.has(start, std::string("PE\0\0", 4)))
        return damaged(
            "is not a Windows program; use the one that the application's build made (--machine "
            "any accepts this one, for a simulated instrument)");
    if (lastByte(header, start) > bytes.size())
        return damaged("is truncated; copy it again");
    const std::string built = machineOf(header.number(start + 4, 2));
    if (built != machine)
        addFinding(report.findings, "application-machine", keypaths::PROGRAM,
                   "is built for " + built + ", not for " + machine +
                       "; build it for the instrument, or set --machine");
}
