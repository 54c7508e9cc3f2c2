#include "tools/updatekey/check/check_installation.h"

#include <algorithm>
#include <cstring>

#include "platform/registry_text.h"
#include "support/languages.h"
#include "support/path_constants.h"
#include "support/text.h"
#include "tools/diagnosis/installation.h"
#include "tools/host/host_file.h"
#include "tools/host/trial_device.h"
#include "tools/updatekey/check/checks.h"

namespace fs = std::filesystem;

namespace {

// Where the updater looks for its language.
constexpr const char* CONFIG_KEY = "HKEY_LOCAL_MACHINE\\SOFTWARE\\VELD\\KESTREL\\SYSTEM_CONFIG";

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

// Limits the languages to the one that the instrument's registry names, if the copy contains it.
void readLanguage(const fs::path& device, KeyUnderCheck& key) {
    const fs::path file = entryAt(device, host::REGISTRY_FILE);
    if (!fs::exists(file))
        return;
    const host::Registry registry = host::Registry::fromText(readHostFile(file));
    const host::RegistryValue* const stored = registry.find(CONFIG_KEY, narrow(LANGUAGE));
    int32_t number = -1;
    if (stored != nullptr && stored->data.size() == sizeof number)
        std::memcpy(&number, stored->data.data(), sizeof number);
    if (findLanguage(number) != nullptr)
        key.options.languages = {number};
    else
        key.add("language-unknown", host::REGISTRY_FILE,
                "does not name one of the languages 0 to " + std::to_string(LANGUAGE_COUNT - 1) +
                    " in LANGUAGE; the updater's screen is English");
}

}  // namespace

Findings checkInstallation(const fs::path& device, const fs::path& makerFolder,
                           const CheckOptions& options) {
    const TemporaryFolder scratch(fs::temp_directory_path() / "updatekey-installation");
    const fs::path folder = keyFolderFor(makerFolder, scratch.path());
    const TrialDevice trialDevice(folder);
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
