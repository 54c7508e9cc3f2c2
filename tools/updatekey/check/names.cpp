#include "tools/updatekey/check/names.h"

#include <algorithm>
#include <regex>

#include "platform/utf.h"

bool isJunkPath(const std::string& path) {
    static const std::regex JUNK(
        "(^|/)("
        "\\.apdisk|\\.directory|\\.ds_store|\\.fseventsd|\\.git|\\.gitignore|\\.localized|"
        "\\.spotlight-v100|\\.svn|\\.trashes|__macosx|desktop\\.ini|ehthumbs\\.db|"
        "\\$recycle\\.bin|system volume information|thumbs\\.db|wpsettings\\.dat|"
        "(\\._|~\\$|\\.~lock\\.)[^/]*|"
        "[^/]+(~|\\.(bak|ilk|orig|pdb|swp|tmp))"
        ")(/|$)",
        std::regex::icase);
    return std::regex_search(path, JUNK);
}

bool isLatin1(const std::string& utf8) {
    const std::u16string wide = host::toUtf16(utf8);
    return std::all_of(wide.begin(), wide.end(), [](char16_t c) { return c <= 0xFF; });
}

bool isFatName(const std::string& name) {
    constexpr std::size_t LONGEST = 255;
    // Windows reserves some names for devices, with any ending.
    static const std::regex BAD(
        "[\x01-\x1F\x7F<>:\"|?*\\\\]|[. ]$|^$|^(con|prn|aux|nul|com[1-9]|lpt[1-9])(\\.|$)",
        std::regex::icase);
    return !std::regex_search(name, BAD) && deviceLength(name) <= LONGEST;
}

std::string shortNameOf(const std::string& name) {
    constexpr std::size_t STEM = 8;
    constexpr std::size_t ENDING = 3;
    static const std::regex DROPPED("[ .]");
    static const std::regex REPLACED("[+,;=\\[\\]]");
    const auto kept = [](const std::string& text) {
        return std::regex_replace(std::regex_replace(text, DROPPED, ""), REPLACED, "_");
    };
    const std::size_t dot = name.rfind('.');
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
