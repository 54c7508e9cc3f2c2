#include "tools/updatekey/make/manifest.h"

#include <fstream>
#include <sstream>
#include <stdexcept>
#include <vector>

#include "tools/host/checksum.h"
#include "tools/host/folder_tree.h"
#include "tools/host/host_file.h"
#include "tools/updatekey/check/key_paths.h"

std::string sha256Of(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    Checksum checksum;
    std::vector<char> buffer(std::size_t{1} << 16);
    do {
        stream.read(buffer.data(), static_cast<std::streamsize>(buffer.size()));
        checksum.add(buffer.data(), static_cast<std::size_t>(stream.gcount()));
    } while (stream);
    if (!stream.eof() || stream.bad())
        throw std::runtime_error("cannot read " + file.generic_string() + ": " + lastError());
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
    constexpr std::size_t HEX_LENGTH = 64;
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
