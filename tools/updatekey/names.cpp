#include "tools/updatekey/names.h"

#include <algorithm>
#include <array>

#include "platform/posix/utf.h"

namespace {

constexpr std::size_t LONGEST_FAT_NAME = 255;

std::string lowerAscii(std::string text) {
    for (char& c : text)
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    return text;
}

}  // namespace

bool isDesktopLitter(const std::string& name) {
    static const std::array<const char*, 11> names = {".ds_store",
                                                      ".spotlight-v100",
                                                      ".trashes",
                                                      ".fseventsd",
                                                      "thumbs.db",
                                                      "ehthumbs.db",
                                                      "desktop.ini",
                                                      "$recycle.bin",
                                                      "__macosx",
                                                      ".directory",
                                                      "system volume information"};
    const std::string lower = lowerAscii(name);
    return name.compare(0, 2, "._") == 0 ||
           std::find(names.begin(), names.end(), lower) != names.end();
}

bool isLatin1(const std::string& utf8) {
    const std::u16string wide = host::toUtf16(utf8);
    return std::all_of(wide.begin(), wide.end(), [](char16_t c) { return c <= 0xFF; });
}

bool isFatName(const std::string& name) {
    const bool badCharacter = std::any_of(name.begin(), name.end(), [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte < 0x20 || byte == 0x7F ||
               std::string("<>:\"|?*\\").find(c) != std::string::npos;
    });
    return !name.empty() && !badCharacter && name.back() != '.' && name.back() != ' ' &&
           deviceLength(name) <= LONGEST_FAT_NAME;
}

std::size_t deviceLength(const std::string& utf8) {
    return host::toUtf16(utf8).size();
}
