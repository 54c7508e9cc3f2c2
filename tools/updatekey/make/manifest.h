// The manifest: the list of a key's files and their checksums. It is beside "VELD", where the
// device ignores it, and in the format of sha256sum, which can verify it too.
#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>

constexpr const char* MANIFEST_NAME = "MANIFEST.sha256";

// Checksums in lower-case hexadecimal, by path relative to the key.
using Manifest = std::map<std::string, std::string>;

// Computes a checksum incrementally.
class Checksum {
  public:
    Checksum();
    Checksum(const Checksum&) = delete;
    Checksum& operator=(const Checksum&) = delete;
    ~Checksum();
    void add(const char* bytes, std::size_t size);
    // The checksum of everything added. Call it once, at the end.
    std::string text();

  private:
    struct State;
    std::unique_ptr<State> state_;
};

// The checksum of a file. Throws std::runtime_error when it cannot be read.
std::string sha256Of(const std::filesystem::path& file);

// Computes the manifest for the files below the key's "VELD".
Manifest computeManifest(const std::filesystem::path& key);

std::string toText(const Manifest& manifest);

// Returns nothing when a line is malformed.
std::optional<Manifest> parseManifest(const std::string& text);
