// The list of a key's files with their checksums, kept beside "VELD" where the device ignores it.
// Its lines are those of sha256sum, which can check it too.
#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>

constexpr const char* MANIFEST_NAME = "MANIFEST.sha256";

// Checksums in lower-case hexadecimal, by path relative to the key.
using Manifest = std::map<std::string, std::string>;

// A checksum in the making.
class Checksum {
  public:
    Checksum();
    Checksum(const Checksum&) = delete;
    Checksum& operator=(const Checksum&) = delete;
    ~Checksum();
    void add(const char* bytes, std::size_t size);
    // Of all that was added; call it once, at the end.
    std::string text();

  private:
    struct State;
    std::unique_ptr<State> state_;
};

// The checksum of a file. Throws std::runtime_error when it cannot be read.
std::string sha256Of(const std::filesystem::path& file);

// The manifest that the files below "VELD" of the key should have.
Manifest computeManifest(const std::filesystem::path& key);

std::string toText(const Manifest& manifest);

// Null when a line is not one of a manifest.
std::optional<Manifest> parseManifest(const std::string& text);
