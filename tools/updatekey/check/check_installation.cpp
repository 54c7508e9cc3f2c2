// Checks the installed files of an instrument as if they were those of a key.

#include <algorithm>
#include <cstdlib>

#include "platform/utf.h"
#include "support/languages.h"
#include "tools/diagnosis/installation.h"
#include "tools/host/host_file.h"
#include "tools/host/key_device.h"
#include "tools/updatekey/check/key_under_check.h"

namespace fs = std::filesystem;

namespace {

constexpr const char* REGISTRY = "registry.reg";

// Returns a folder with the installed files in its "VELD": the flash disk itself or, when the
// maker's folder has another name, a copy in `scratch`.
fs::path keyFolderFor(const fs::path& makerFolder, const fs::path& scratch) {
    const fs::path place = fs::canonical(makerFolder);
    if (place.filename() == keypaths::MAKER)
        return place.parent_path();
    for (const auto& [path, file] : installedFiles(place)) {
        const fs::path copy = scratch / keypaths::MAKER / path;
        fs::create_directories(copy.parent_path());
        fs::copy_file(file.file, copy);
    }
    return scratch;
}

std::vector<TreeEntry> treeOf(const fs::path& makerFolder, bool copied) {
    std::vector<TreeEntry> tree;
    for (const std::string& name : UPDATE_FOLDERS) {
        const fs::path folder = entryAt(makerFolder, name);
        if (!fs::is_directory(folder))
            continue;
        const std::string path =
            keypaths::MAKER + "/" + (copied ? name : folder.filename().generic_string());
        tree.push_back({path, TreeEntry::Kind::Folder, 0});
        for (const TreeEntry& entry : readTree(folder))
            tree.push_back({path + "/" + entry.path, entry.kind, entry.size});
    }
    std::sort(tree.begin(), tree.end(),
              [](const TreeEntry& a, const TreeEntry& b) { return a.path < b.path; });
    return tree;
}

// Returns the language in an exported registry, in any encoding of the registry editors; -1 when it
// has none.
int32_t languageIn(std::string text) {
    const std::string start = "\\veld\\kestrel\\system_config]";
    const std::string name = "\"language\"=dword:";
    text.erase(std::remove(text.begin(), text.end(), '\0'), text.end());
    text = host::foldCase(text);
    text.erase(0, text.find(start));
    text.erase(std::min(text.find('[', start.size()), text.size()));
    const std::size_t found = text.find(name);
    return found == std::string::npos
               ? -1
               : static_cast<int32_t>(std::strtol(text.c_str() + found + name.size(), nullptr, 16));
}

// Limits the languages to the one that the instrument's registry names, if the copy contains it.
void readLanguage(const fs::path& device, KeyUnderCheck& key) {
    const fs::path registry = entryAt(device, REGISTRY);
    if (!fs::exists(registry))
        return;
    const int32_t number = languageIn(readHostFile(registry));
    if (findLanguage(number) != nullptr)
        key.options.languages = {number};
    else
        key.add("language-unknown", REGISTRY,
                "does not name one of the languages 0 to " + std::to_string(LANGUAGE_COUNT - 1) +
                    " in LANGUAGE; the updater's screen is English");
}

}  // namespace

Findings checkInstallation(const fs::path& device, const fs::path& makerFolder,
                           const CheckOptions& options) {
    const TemporaryFolder scratch(fs::temp_directory_path() / "updatekey-installation");
    const fs::path folder = keyFolderFor(makerFolder, scratch.path());
    const KeyDevice keyDevice(folder);
    KeyUnderCheck key{folder, treeOf(makerFolder, folder == scratch.path()), options};
    readLanguage(device, key);
    Findings findings = std::move(key.report.findings);
    key.report.findings.clear();

    checkApplication(key);
    checkNames(key);
    if (key.hasFolder(keypaths::GUI_DATA)) {
        checkFonts(key);
        checkTexts(key);
    }
    for (Finding finding : key.report.findings) {
        if (finding.severity != Severity::Error)
            continue;
        finding.path.erase(0, keypaths::MAKER.size() + 1);
        findings.push_back(finding);
    }
    return findings;
}
