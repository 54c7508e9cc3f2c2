// The manifest: the list of a key's files and their checksums. It is beside "VELD", where the
// device ignores it, and in the format of sha256sum, which can verify it too.
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

// Computes the manifest for the files below the key's "VELD".
Manifest computeManifest(const std::filesystem::path& key);

std::string toText(const Manifest& manifest);

// Returns nothing when a line is malformed.
std::optional<Manifest> parseManifest(const std::string& text);
