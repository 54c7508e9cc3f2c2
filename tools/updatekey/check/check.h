// Checks a key before it is shipped.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "tools/diagnosis/finding.h"
#include "tools/updatekey/check/prediction.h"

// The numbers of all languages.
std::vector<int32_t> allLanguages();

// Returns the space in bytes that a file takes on the flash disk: whole clusters.
constexpr uint64_t sizeOnFlash(uint64_t bytes) {
    constexpr uint64_t CLUSTER = 4096;
    return (bytes + CLUSTER - 1) / CLUSTER * CLUSTER;
}

struct CheckOptions {
    std::optional<uint64_t> flashSize;  // bytes of the device's flash disk
    std::optional<uint64_t>
        installedSize;  // bytes used on it; assumed to be twice the key's size if not set
    std::vector<int32_t> languages = allLanguages();  // languages that the key must support
    std::string machine = "arm";     // the application's processor: arm, x86, x64 or any
    std::set<std::string> accepted;  // codes of findings to suppress
    Progress progress;
};

// Whether the key has a manifest, and whether the files match it.
enum class ManifestState { Absent, Matches, Differs };

// "none", "matches" or "does not match".
const char* textOf(ManifestState state);

struct CheckReport {
    Prediction prediction;
    Findings findings;
    ManifestState manifest = ManifestState::Absent;
    std::vector<std::string> notCopied;  // files in the key's "VELD" that the device ignores
    uint64_t copiedBytes = 0;
    uint64_t flashNeeded = 0;  // peak use of the flash disk during the update, in bytes
};

// Checks the key in `folder`, which must exist. Throws std::runtime_error when a file cannot be
// read, or when there is not enough space for the trial run.
CheckReport checkKey(const std::filesystem::path& folder, const CheckOptions& options);
