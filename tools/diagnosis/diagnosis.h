// Diagnoses a returned instrument and advises how to repair it. Changes nothing.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "tools/diagnosis/disk_state.h"
#include "tools/diagnosis/log_lines.h"

struct FolderFinding {
    std::string name;  // "KSTRL_old"
    bool there = false;
    std::size_t files = 0;
    uint64_t bytes = 0;
    std::string version;    // from the files; empty when unknown
    bool onlyCopy = false;  // its content exists nowhere else on the disk
};

// Compares the installed files with those of a key.
struct KeyComparison {
    std::vector<std::string> different;
    std::vector<std::string> missing;  // on the key and not installed
    std::vector<std::string> tooMany;  // installed and not on the key

    bool same() const { return different.empty() && missing.empty() && tooMany.empty(); }
};

// A step of the repair. Follow the steps in the given order.
struct Advice {
    enum class Action {
        Save,         // copy `folder` to another disk before any other step
        Remove,       // delete `folder`
        Rename,       // rename `folder` to `to`
        UpdateAgain,  // run the updater with a good key
        Start,        // start the instrument
    };

    Action action;
    std::string folder;  // below the maker's folder
    std::string to;      // the new name, for Rename
    std::string text;    // a sentence for the technician
};

// "save", "remove", "rename", "update-again" or "start".
const char* nameOf(Advice::Action action);

struct Diagnosis {
    std::vector<FolderFinding> folders;
    UpdateStep step = UpdateStep::None;
    LogReading log;
    std::vector<std::string> contradictions;  // between the log and the disk
    std::optional<KeyComparison> comparison;  // with the key that was given
    bool startsAsItIs = false;  // there is an application that can be started, with GUI data
    std::vector<Advice> advice;

    // Whether the instrument is in order and only has to be started.
    bool sound() const;
};

// Examines `device`, a device folder or a copy of its flash disk, and compares the installation
// with `key` if given. Throws std::runtime_error when `device` is neither.
Diagnosis diagnose(const std::filesystem::path& device,
                   const std::optional<std::filesystem::path>& key = std::nullopt);
