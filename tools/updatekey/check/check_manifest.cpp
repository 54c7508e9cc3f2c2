// Compares the key with its manifest. A key without a manifest is accepted: it was not made by
// updatekey.

#include "platform/posix/files/read_file.h"
#include "tools/updatekey/check/check.h"
#include "tools/updatekey/check/key_paths.h"
#include "tools/updatekey/make/manifest.h"

void checkManifest(const KeyUnderCheck& key, CheckReport& report) {
    const TreeEntry* const entry = key.find(MANIFEST_NAME);
    if (entry == nullptr)
        return;
    const std::optional<Manifest> stated =
        parseManifest(host::readFile(key.folder / MANIFEST_NAME));
    if (!stated)
        return addError(report.findings, "manifest-damaged", MANIFEST_NAME,
                        "is not a list of checksums and paths");

    for (const TreeEntry& candidate : key.tree) {
        if (candidate.kind != TreeEntry::Kind::File ||
            !startsWith(candidate.path, keypaths::MAKER + "/"))
            continue;
        const auto line = stated->find(candidate.path);
        if (line == stated->end())
            addError(report.findings, "manifest-unknown-file", candidate.path,
                     "was added after the manifest was made");
        else if (sha256Of(key.folder / candidate.path) != line->second)
            addError(report.findings, "manifest-mismatch", candidate.path,
                     "was changed after the manifest was made");
    }
    for (const auto& [path, checksum] : *stated)
        if (key.find(path) == nullptr)
            addError(report.findings, "manifest-missing-file", path,
                     "is in the manifest but not on the key");
}
