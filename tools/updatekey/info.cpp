#include "tools/updatekey/info.h"

#include "tools/host/printable.h"
#include "tools/host/trial_device.h"
#include "tools/updatekey/check/checks.h"
#include "tools/updatekey/check/prediction.h"

namespace {

void count(const TreeEntry& entry, FolderInfo& folder) {
    if (entry.kind != TreeEntry::Kind::File || !startsWith(entry.path, folder.path))
        return;
    ++folder.files;
    folder.bytes += entry.size;
}

}  // namespace

KeyInfo describeKey(const std::filesystem::path& key) {
    const TrialDevice device(key);
    KeyInfo info;
    const Prediction prediction = lookAtKey();
    info.accepted = prediction.accepted;
    info.version = prediction.version;
    for (const std::string& line : prediction.notes)
        info.notes.push_back(latin1ToUtf8(line));
    info.application.path = keypaths::APPLICATION + "/";
    info.guiData.path = keypaths::GUI_DATA + "/";
    info.tree = readTree(key);
    for (const TreeEntry& entry : info.tree) {
        count(entry, info.whole);
        count(entry, info.application);
        count(entry, info.guiData);
        if (entry.kind == TreeEntry::Kind::File)
            info.checksums[entry.path] = sha256Of(key / entry.path);
    }
    KeyUnderCheck compared{key, info.tree, {}};
    checkManifest(compared);
    info.manifest = compared.report.manifest;
    return info;
}
