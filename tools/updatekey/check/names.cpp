#include "tools/updatekey/check/names.h"

#include <algorithm>
#include <iterator>
#include <set>

#include "platform/utf.h"
#include "tools/host/folder_tree.h"

namespace {

constexpr std::size_t LONGEST_FAT_NAME = 255;

// Whether Windows reserves the name for a device, such as "NUL" or "con.txt", so that no file can
// have it.
bool isDeviceName(const std::string& name) {
    static const std::set<std::string> NAMES = {"con", "prn", "aux", "nul"};
    const std::string stem = lowerAscii(name.substr(0, name.find('.')));
    const bool port = stem.size() == 4 &&
                      (stem.rfind("com", 0) == 0 || stem.rfind("lpt", 0) == 0) && stem[3] >= '1' &&
                      stem[3] <= '9';
    return port || NAMES.count(stem) != 0;
}

}  // namespace

std::string lowerAscii(std::string text) {
    for (char& c : text)
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    return text;
}

bool isJunkFile(const std::string& name) {
    static const std::set<std::string> NAMES = {".apdisk",
                                                ".directory",
                                                ".ds_store",
                                                ".fseventsd",
                                                ".git",
                                                ".gitignore",
                                                ".localized",
                                                ".spotlight-v100",
                                                ".svn",
                                                ".trashes",
                                                "__macosx",
                                                "desktop.ini",
                                                "ehthumbs.db",
                                                "$recycle.bin",
                                                "system volume information",
                                                "thumbs.db",
                                                "wpsettings.dat"};
    static const char* const ENDINGS[] = {"~", ".bak", ".ilk", ".orig", ".pdb", ".swp", ".tmp"};
    static const char* const BEGINNINGS[] = {"._", "~$", ".~lock."};
    const std::string lower = lowerAscii(name);
    const auto begins = [&](const std::string& text) { return lower.rfind(text, 0) == 0; };
    const auto ends = [&](const std::string& text) {
        return lower.size() > text.size() &&
               lower.compare(lower.size() - text.size(), text.size(), text) == 0;
    };
    return NAMES.count(lower) != 0 ||
           std::any_of(std::begin(BEGINNINGS), std::end(BEGINNINGS), begins) ||
           std::any_of(std::begin(ENDINGS), std::end(ENDINGS), ends);
}

bool isJunkPath(const std::string& path) {
    for (std::string part = path; !part.empty(); part = parentOf(part))
        if (isJunkFile(nameOf(part)))
            return true;
    return false;
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
    return !name.empty() && !badCharacter && !isDeviceName(name) && name.back() != '.' &&
           name.back() != ' ' && deviceLength(name) <= LONGEST_FAT_NAME;
}

std::string shortNameOf(const std::string& name) {
    constexpr std::size_t STEM = 8;
    constexpr std::size_t ENDING = 3;
    const std::size_t dot = name.rfind('.');
    const auto kept = [](const std::string& text) {
        std::string result;
        for (const char c : text)
            if (c != ' ' && c != '.')
                result += std::string("+,;=[]").find(c) != std::string::npos ? '_' : c;
        return result;
    };
    const std::string stem = kept(name.substr(0, dot));
    const std::string ending = dot == std::string::npos ? "" : kept(name.substr(dot + 1));
    if (stem.size() <= STEM && ending.size() <= ENDING && stem == name.substr(0, dot))
        return {};
    return foldCase(stem.substr(0, STEM - 2) + "~1" +
                    (ending.empty() ? "" : "." + ending.substr(0, ENDING)));
}

std::size_t deviceLength(const std::string& utf8) {
    return host::toUtf16(utf8).size();
}
