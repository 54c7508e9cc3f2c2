// The list of a key's files with their checksums, kept beside "VELD" where the device ignores it.
// Its lines are those of sha256sum, which can check it too.
#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>

constexpr const char* MANIFEST_NAME = "MANIFEST.sha256";

// Checksums in lower-case hexadecimal, by path relative to the key.
using Manifest = std::map<std::string, std::string>;

// The checksum of a file. Throws std::runtime_error when it cannot be read.
std::string sha256Of(const std::filesystem::path& file);

// The manifest that the files below "VELD" of the key should have.
Manifest computeManifest(const std::filesystem::path& key);

std::string toText(const Manifest& manifest);

// Null when a line is not one of a manifest.
std::optional<Manifest> parseManifest(const std::string& text);
