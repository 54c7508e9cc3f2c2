#include "tools/updatekey/check/check.h"

#include <algorithm>
#include <stdexcept>

#include "tools/host/trial_device.h"
#include "tools/updatekey/check/checks.h"
#include "tools/updatekey/check/names.h"

namespace fs = std::filesystem;

namespace {

void requireRoomFor(const std::vector<TreeEntry>& tree, const fs::path& scratch) {
    uint64_t largest = 0;
    for (const TreeEntry& entry : tree)
        largest = std::max(largest, entry.size);
    // A file that is too large for FAT32 is reported as a finding.
    if (largest <= FAT32_FILE_LIMIT && fs::space(scratch).available <= largest)
        throw std::runtime_error("not enough space in " + scratch.parent_path().generic_string() +
                                 " for the trial run; set TMPDIR to a folder with more");
}

}  // namespace

std::vector<int32_t> allLanguages() {
    std::vector<int32_t> numbers;
    for (const Language& language : LANGUAGES)
        numbers.push_back(language.number);
    return numbers;
}

const char* textOf(ManifestState state) {
    constexpr const char* TEXTS[] = {"none", "matches", "does not match"};
    return TEXTS[static_cast<std::size_t>(state)];
}

CheckReport checkKey(const fs::path& folder, const CheckOptions& options) {
    const TrialDevice device(folder);
    KeyUnderCheck key{folder, readTree(folder), options};
    requireRoomFor(key.tree, device.root());

    key.report.prediction = predict(options.progress);
    checkLayout(key);
    checkApplication(key);
    checkNames(key);
    // A folder with the wrong case is an error, although the device finds it. Its content is
    // checked once it has the right name.
    const TreeEntry* const guiData = key.find(keypaths::GUI_DATA);
    if (guiData == nullptr || guiData->path == keypaths::GUI_DATA) {
        checkDropped(key);
        if (key.report.prediction.accepted) {
            checkNotes(key);
            checkFonts(key);
            checkTexts(key);
            checkSpace(key);
        }
        if (key.hasFolder(keypaths::MAKER))
            checkManifest(key);
    }
    removeFindings(key.report.findings, options.accepted);
    return key.report;
}
