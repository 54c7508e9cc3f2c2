// Compares the key with its manifest. A key without a manifest is accepted: it was not made by
// updatekey.

#include "tools/updatekey/check/checks.h"
#include "tools/updatekey/make/manifest.h"

void checkManifest(KeyUnderCheck& key) {
    const TreeEntry* const entry = key.find(MANIFEST_NAME);
    if (entry == nullptr)
        return;
    const std::size_t before = key.report.findings.size();
    key.report.manifest = ManifestState::Differs;
    const std::optional<Manifest> stated = parseManifest(key.read(MANIFEST_NAME));
    if (!stated)
        return key.add("manifest-damaged", MANIFEST_NAME, "is not a list of checksums and paths");

    for (const TreeEntry& candidate : key.tree) {
        if (candidate.kind != TreeEntry::Kind::File ||
            !startsWith(candidate.path, keypaths::MAKER + "/"))
            continue;
        const auto line = stated->find(candidate.path);
        if (line == stated->end())
            key.add("manifest-unknown-file", candidate.path,
                    "was added after the manifest was made");
        else if (sha256Of(key.folder / candidate.path) != line->second)
            key.add("manifest-mismatch", candidate.path, "was changed after the manifest was made");
    }
    for (const auto& [path, checksum] : *stated)
        if (key.find(path) == nullptr)
            key.add("manifest-missing-file", path, "is in the manifest but not on the key");
    if (key.report.findings.size() == before)
        key.report.manifest = ManifestState::Matches;
}
