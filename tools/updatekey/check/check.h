// Checks a key before it is shipped.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "support/languages.h"
#include "tools/host/folder_tree.h"
#include "tools/updatekey/check/finding.h"
#include "tools/updatekey/check/prediction.h"

// The numbers of all languages.
std::vector<int32_t> allLanguages();

struct CheckOptions {
    std::optional<uint64_t> flashSize;  // bytes of the device's flash disk
    std::optional<uint64_t>
        installedSize;  // bytes used on it; assumed to be twice the key's size if not set
    std::vector<int32_t> languages = allLanguages();  // languages that the key must support
    std::string machine = "arm";     // the application's processor: arm, x86, x64 or any
    std::set<std::string> accepted;  // codes of findings to suppress
    Progress progress;
};

struct CheckReport {
    Prediction prediction;
    Findings findings;
    std::vector<std::string> notCopied;  // files in the key's "VELD" that the device ignores
    uint64_t copiedBytes = 0;
    uint64_t flashNeeded = 0;  // peak use of the flash disk during the update, in bytes

    bool hasErrors() const;
};

// A key during its check. `folder` has the content of the storage device and is plugged into the
// current device.
struct KeyUnderCheck {
    std::filesystem::path folder;
    std::vector<TreeEntry> tree;
    CheckOptions options;

    // Returns the entry with this path or, as FAT and the device would, one that differs in case;
    // null when there is neither.
    const TreeEntry* find(const std::string& path) const;

    // The scripts of the languages that the key must support.
    std::set<Script> scripts() const;
};

// Checks the key in `folder`, which must exist. Throws std::runtime_error when there is not enough
// space for the trial run.
CheckReport checkKey(const std::filesystem::path& folder, const CheckOptions& options);

// The individual checks. Each adds its findings.
void checkLayout(const KeyUnderCheck& key, CheckReport& report);
void checkApplication(const KeyUnderCheck& key, CheckReport& report);
void checkDropped(const KeyUnderCheck& key, CheckReport& report);
void checkNames(const KeyUnderCheck& key, CheckReport& report);
void checkNotes(const KeyUnderCheck& key, CheckReport& report);
void checkFonts(const KeyUnderCheck& key, CheckReport& report);
void checkTexts(const KeyUnderCheck& key, CheckReport& report);
void checkSpace(const KeyUnderCheck& key, CheckReport& report);
void checkManifest(const KeyUnderCheck& key, CheckReport& report);

// Returns the space in bytes that a file takes on the flash disk: whole clusters of 4096 bytes.
uint64_t sizeOnFlash(uint64_t bytes);
