#include "tools/updatekey/info.h"

#include "tools/updatekey/check/check.h"
#include "tools/updatekey/check/key_device.h"
#include "tools/updatekey/check/key_paths.h"
#include "tools/updatekey/check/prediction.h"
#include "tools/updatekey/make/manifest.h"

namespace {

void count(const TreeEntry& entry, FolderInfo& folder) {
    if (entry.kind != TreeEntry::Kind::File || !startsWith(entry.path, folder.path))
        return;
    ++folder.files;
    folder.bytes += entry.size;
}

ManifestState manifestState(const KeyUnderCheck& key) {
    if (key.find(MANIFEST_NAME) == nullptr)
        return ManifestState::Absent;
    CheckReport report;
    checkManifest(key, report);
    return report.findings.empty() ? ManifestState::Matches : ManifestState::Differs;
}

}  // namespace

const char* textOf(ManifestState state) {
    constexpr const char* TEXTS[] = {"none", "matches", "does not match"};
    return TEXTS[static_cast<std::size_t>(state)];
}

KeyInfo describeKey(const std::filesystem::path& key) {
    const KeyDevice device(key);
    KeyInfo info;
    const Prediction prediction = lookAtKey();
    info.seen = prediction.seen;
    info.version = prediction.version;
    for (const std::string& line : prediction.notes)
        info.notes.push_back(toDisplay(line));
    info.application.path = keypaths::APPLICATION + "/";
    info.guiData.path = keypaths::GUI_DATA + "/";
    info.tree = readTree(key);
    for (const TreeEntry& entry : info.tree) {
        count(entry, info.whole);
        count(entry, info.application);
        count(entry, info.guiData);
    }
    info.manifest = manifestState({key, info.tree, {}});
    return info;
}
