#include "tools/updatekey/make/manifest.h"

#include <nettle/sha2.h>

#include <fstream>
#include <sstream>
#include <stdexcept>
#include <vector>

#include "tools/host/folder_tree.h"
#include "tools/updatekey/check/key_paths.h"

namespace {

constexpr std::size_t HEX_LENGTH = std::size_t{2} * SHA256_DIGEST_SIZE;

std::string toHex(const uint8_t* bytes, std::size_t size) {
    constexpr const char* DIGITS = "0123456789abcdef";
    std::string text;
    for (std::size_t i = 0; i < size; ++i) {
        text += DIGITS[bytes[i] >> 4];
        text += DIGITS[bytes[i] & 0xF];
    }
    return text;
}

}  // namespace

struct Checksum::State {
    sha256_ctx context;
};

Checksum::Checksum() : state_(std::make_unique<State>()) {
    sha256_init(&state_->context);
}

Checksum::~Checksum() = default;

void Checksum::add(const char* bytes, std::size_t size) {
    sha256_update(&state_->context, size, reinterpret_cast<const uint8_t*>(bytes));
}

std::string Checksum::text() {
    uint8_t digest[SHA256_DIGEST_SIZE];
    sha256_digest(&state_->context, sizeof digest, digest);
    return toHex(digest, sizeof digest);
}

std::string sha256Of(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    Checksum checksum;
    std::vector<char> buffer(std::size_t{1} << 16);
    do {
        stream.read(buffer.data(), static_cast<std::streamsize>(buffer.size()));
        checksum.add(buffer.data(), static_cast<std::size_t>(stream.gcount()));
    } while (stream);
    if (!stream.eof() || stream.bad())
        throw std::runtime_error("cannot read " + file.string());
    return checksum.text();
}

Manifest computeManifest(const std::filesystem::path& key) {
    Manifest manifest;
    for (const TreeEntry& entry : readTree(key / keypaths::MAKER)) {
        const std::string path = keypaths::MAKER + "/" + entry.path;
        if (entry.kind == TreeEntry::Kind::File)
            manifest[path] = sha256Of(key / path);
    }
    return manifest;
}

std::string toText(const Manifest& manifest) {
    std::string text;
    for (const auto& [path, checksum] : manifest)
        text.append(checksum).append("  ").append(path).append("\n");
    return text;
}

std::optional<Manifest> parseManifest(const std::string& text) {
    Manifest manifest;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        const bool sound = line.find_first_not_of("0123456789abcdef") == HEX_LENGTH &&
                           line.compare(HEX_LENGTH, 2, "  ") == 0 && line.size() > HEX_LENGTH + 2;
        if (!sound)
            return std::nullopt;
        manifest[line.substr(HEX_LENGTH + 2)] = line.substr(0, HEX_LENGTH);
    }
    return manifest;
}
