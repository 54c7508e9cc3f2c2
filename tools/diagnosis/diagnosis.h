// Diagnoses a returned instrument and advises how to repair it. Changes nothing.
#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "tools/diagnosis/disk_state.h"
#include "tools/diagnosis/finding.h"
#include "tools/diagnosis/log_lines.h"
#include "tools/host/file_changes.h"

struct FolderFinding {
    std::string name;  // as it is written on the disk: "KSTRL_old"
    bool there = false;
    std::size_t files = 0;
    uint64_t bytes = 0;
    std::string version;    // from the files; empty when unknown
    bool onlyCopy = false;  // its content exists nowhere else on the disk
};

// A step of the repair. Follow the steps in the given order.
struct Advice {
    enum class Action {
        Save,         // copy `folder` to another disk before any other step
        Remove,       // delete `folder`
        Rename,       // rename `folder` to `to`
        UpdateAgain,  // run the updater with a good key
        Start,        // start the instrument
        CheckDisk,    // check the file system of a FAT disk
    };

    Action action;
    std::string folder;  // below the maker's folder
    std::string to;      // the new name, for Rename
    std::string text;    // a sentence for the technician
};

// "save", "remove", "rename", "update-again", "start" or "check-disk".
const char* nameOf(Advice::Action action);

struct Diagnosis {
    std::vector<FolderFinding> folders;
    UpdateStep step = UpdateStep::None;
    LogReading log;
    Findings findings;  // of the folders, the installed files and the log
    std::optional<std::vector<FileChange>> changes;  // since the key that was given was installed
    std::vector<std::string> hindrances;  // why the instrument cannot be started; empty when it can
    std::vector<Advice> advice;

    // Whether the instrument is in order and only has to be started.
    bool sound() const;
};

struct DiagnoseOptions {
    std::optional<std::filesystem::path> key;         // compared with what is installed
    std::optional<std::filesystem::space_info> disk;  // the flash disk's size and free space
    std::function<Findings(const std::filesystem::path& makerFolder)> check;  // of installed files
};

// Examines `device`, a device folder or a copy of its flash disk. Throws std::runtime_error when
// `device` is neither, is an update key, or cannot be read.
Diagnosis diagnose(const std::filesystem::path& device, const DiagnoseOptions& options = {});
