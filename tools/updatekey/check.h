// Judges a key before it leaves the house.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "support/languages.h"
#include "tools/diagnosis/key_tree.h"
#include "tools/updatekey/finding.h"
#include "tools/updatekey/prediction.h"

// The numbers of all languages.
std::vector<int32_t> allLanguages();

struct CheckOptions {
    std::optional<uint64_t> flashSize;  // bytes of the device's flash disk
    std::optional<uint64_t>
        installedSize;  // of what is on it, in bytes; the key's twice if unknown
    std::vector<int32_t> languages = allLanguages();  // that the key is to serve
    std::string machine = "arm";     // that the application is built for: arm, x86, x64 or any
    std::set<std::string> accepted;  // codes of findings that are known and wanted: left out
    Progress progress;
};

struct CheckReport {
    Prediction prediction;
    Findings findings;
    std::vector<std::string> notCopied;  // files of the key's "VELD" that the device drops
    uint64_t copiedBytes = 0;
    uint64_t flashNeeded = 0;  // bytes on the flash disk at the worst moment of the update

    bool hasErrors() const;
};

// A key while it is judged: `folder` stands for the root of the storage device, which is plugged
// into the current device.
struct KeyUnderCheck {
    std::filesystem::path folder;
    std::vector<KeyEntry> tree;
    CheckOptions options;

    // The entry of this path; in another case where there is none in this one, as FAT and the
    // device find it. Null when there is neither.
    const KeyEntry* find(const std::string& path) const;

    // The scripts of the languages that the key is to serve.
    std::set<Script> scripts() const;
};

// Judges the key in `folder`, which exists. Throws std::runtime_error when there is no room to try
// it out.
CheckReport checkKey(const std::filesystem::path& folder, const CheckOptions& options);

// The judges, each for one side of the matter; they add to the findings.
void checkLayout(const KeyUnderCheck& key, CheckReport& report);
void checkApplication(const KeyUnderCheck& key, CheckReport& report);
void checkDropped(const KeyUnderCheck& key, CheckReport& report);
void checkNames(const KeyUnderCheck& key, CheckReport& report);
void checkNotes(const KeyUnderCheck& key, CheckReport& report);
void checkFonts(const KeyUnderCheck& key, CheckReport& report);
void checkTexts(const KeyUnderCheck& key, CheckReport& report);
void checkSpace(const KeyUnderCheck& key, CheckReport& report);
void checkManifest(const KeyUnderCheck& key, CheckReport& report);

// What a file takes on the flash disk, which gives room by the cluster.
uint64_t sizeOnFlash(uint64_t bytes);
