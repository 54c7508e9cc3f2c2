// A key, or an installation, during its check.
#pragma once

#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "render/font_file.h"
#include "support/languages.h"
#include "tools/host/folder_tree.h"
#include "tools/updatekey/check/check.h"
#include "tools/updatekey/check/key_paths.h"

// `folder` has the content of the storage device and is plugged into the current device.
struct KeyUnderCheck {
    std::filesystem::path folder;
    std::vector<TreeEntry> tree;
    CheckOptions options;
    CheckReport report = {};

    // Returns the entry with this path or, as FAT and the device would, one that differs in case;
    // null when there is neither.
    const TreeEntry* find(const std::string& path) const;
    bool hasFolder(const std::string& path) const;

    // Returns the file's bytes. Throws std::runtime_error when it is missing or cannot be read.
    std::string read(const std::string& path) const;

    // The scripts of the languages that the key must support.
    std::set<Script> scripts() const;

    // Adds a finding to the report.
    void add(const std::string& code, const std::string& path, const std::string& text) {
        addFinding(report.findings, code, path, text);
    }
};

// Loads a face (a font of one size) of the key. It has no glyphs when it is missing.
FontData loadKeyFace(const std::string& faceName);

// Formats characters for a message: "é" (U+00E9), ...
std::string listCharacters(const std::set<WCHAR>& characters);
