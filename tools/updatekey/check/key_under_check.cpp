#include "tools/updatekey/check/key_under_check.h"

#include <algorithm>
#include <cstdio>

#include "platform/utf.h"
#include "tools/host/host_file.h"
#include "tools/host/trial_device.h"

const TreeEntry* KeyUnderCheck::find(const std::string& path) const {
    const auto entry = std::lower_bound(tree.begin(), tree.end(), path,
                                        [](const TreeEntry& candidate, const std::string& sought) {
                                            return candidate.path < sought;
                                        });
    if (entry != tree.end() && entry->path == path)
        return &*entry;
    const std::string folded = host::foldCase(path);
    const auto other = std::find_if(tree.begin(), tree.end(), [&](const TreeEntry& candidate) {
        return candidate.path.size() == path.size() && host::foldCase(candidate.path) == folded;
    });
    return other != tree.end() ? &*other : nullptr;
}

bool KeyUnderCheck::hasFolder(const std::string& path) const {
    const TreeEntry* const entry = find(path);
    return entry != nullptr && entry->kind == TreeEntry::Kind::Folder;
}

std::string KeyUnderCheck::read(const std::string& path) const {
    const TreeEntry* const entry = find(path);
    return readHostFile(folder / (entry != nullptr ? entry->path : path));
}

std::set<Script> KeyUnderCheck::scripts() const {
    std::set<Script> scripts;
    for (const int32_t number : options.languages)
        scripts.insert(findLanguage(number)->script);
    return scripts;
}

FontData loadKeyFace(const std::string& faceName) {
    const std::string path = TrialDevice::usbRoot() + keypaths::GUI_DATA + "/fonts/" + faceName;
    FontData face;
    loadFontFile(path + ".fnt", face);
    loadKerningFile(path + ".kern", face);
    return face;
}

std::string listCharacters(const std::set<WCHAR>& characters) {
    constexpr std::size_t SHOWN = 8;
    std::string list;
    std::size_t count = 0;
    for (const WCHAR code : characters) {
        if (count++ == SHOWN)
            return list + ", and " + std::to_string(characters.size() - SHOWN) + " more";
        char number[16];
        std::snprintf(number, sizeof number, "U+%04X", static_cast<unsigned>(code));
        const bool printable = code > 0x20 && !(code >= 0x7F && code < 0xA0);
        list += list.empty() ? "" : ", ";
        list += printable ? "\"" + host::toUtf8(std::u16string(1, code)) + "\" (" + number + ")"
                          : number;
    }
    return list;
}
