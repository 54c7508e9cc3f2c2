#include "tools/updatekey/check/check.h"

#include <algorithm>
#include <stdexcept>

#include "tools/updatekey/check/key_device.h"
#include "tools/updatekey/check/key_paths.h"
#include "tools/updatekey/check/names.h"

namespace fs = std::filesystem;

namespace {

void requireRoomFor(const std::vector<TreeEntry>& tree, const fs::path& scratch) {
    uint64_t largest = 0;
    for (const TreeEntry& entry : tree)
        largest = std::max(largest, entry.size);
    // A file that is too large for FAT32 is reported as a finding.
    if (largest <= FAT32_FILE_LIMIT && fs::space(scratch).available <= largest)
        throw std::runtime_error("not enough space in " + scratch.parent_path().string() +
                                 " for the trial run; set TMPDIR to a folder with more");
}

}  // namespace

bool CheckReport::hasErrors() const {
    return std::any_of(findings.begin(), findings.end(),
                       [](const Finding& finding) { return finding.severity == Severity::Error; });
}

std::vector<int32_t> allLanguages() {
    std::vector<int32_t> numbers;
    for (const Language& language : LANGUAGES)
        numbers.push_back(language.number);
    return numbers;
}

std::set<Script> KeyUnderCheck::scripts() const {
    std::set<Script> scripts;
    for (const int32_t number : options.languages)
        scripts.insert(findLanguage(number)->script);
    return scripts;
}

const TreeEntry* KeyUnderCheck::find(const std::string& path) const {
    const auto entry = std::lower_bound(tree.begin(), tree.end(), path,
                                        [](const TreeEntry& candidate, const std::string& sought) {
                                            return candidate.path < sought;
                                        });
    if (entry != tree.end() && entry->path == path)
        return &*entry;
    const auto other = std::find_if(tree.begin(), tree.end(), [&](const TreeEntry& candidate) {
        return candidate.path.size() == path.size() && foldCase(candidate.path) == foldCase(path);
    });
    return other != tree.end() ? &*other : nullptr;
}

CheckReport checkKey(const fs::path& folder, const CheckOptions& options) {
    const KeyDevice device(folder);
    KeyUnderCheck key{folder, readTree(folder), options};
    requireRoomFor(key.tree, device.root());

    CheckReport report;
    report.prediction = predict(options.progress);
    checkLayout(key, report);
    checkApplication(key, report);
    // A folder with the wrong case is an error, although the device finds it. Its content is
    // checked once it has the right name.
    const TreeEntry* const guiData = key.find(keypaths::GUI_DATA);
    const bool isWellNamed = guiData == nullptr || guiData->path == keypaths::GUI_DATA;
    if (isWellNamed)
        checkDropped(key, report);
    checkNames(key, report);
    if (report.prediction.seen && isWellNamed) {
        checkNotes(key, report);
        checkFonts(key, report);
        checkTexts(key, report);
        checkSpace(key, report);
    }
    if (isWellNamed)
        checkManifest(key, report);
    Findings& findings = report.findings;
    findings.erase(std::remove_if(findings.begin(), findings.end(),
                                  [&](const Finding& finding) {
                                      return options.accepted.count(finding.code) != 0;
                                  }),
                   findings.end());
    return report;
}
