#include "tools/updatekey/difference.h"

#include <algorithm>
#include <iterator>

#include "tools/diagnosis/installation.h"
#include "tools/updatekey/check/key_device.h"
#include "tools/updatekey/check/key_paths.h"
#include "tools/updatekey/check/prediction.h"

namespace fs = std::filesystem;

namespace {

struct Side {
    bool isKey = false;
    std::string version;
    std::vector<std::string> notes;
    FileSet files;
};

// For a key, the files that the device would copy; for anything else, the installed files.
Side look(const fs::path& folder) {
    Side side;
    const fs::path maker = makerFolderOf(folder);
    side.files = installedFiles(maker);
    side.version = applicationVersion(maker / keylayout::APPLICATION);
    if (maker.lexically_relative(folder) != keypaths::MAKER ||
        !fs::exists(maker / keylayout::RELEASE_NOTES))
        return side;
    side.isKey = true;
    const KeyDevice device(folder);
    const Prediction prediction = predict({});
    side.version = prediction.version;
    for (const std::string& line : prediction.notes)
        side.notes.push_back(toDisplay(line));
    for (auto file = side.files.begin(); file != side.files.end();) {
        const bool taken = prediction.copied.count(keypaths::MAKER + "/" + file->first) != 0;
        file = taken ? std::next(file) : side.files.erase(file);
    }
    return side;
}

}  // namespace

bool Difference::empty() const {
    return files.empty() && versionBefore == versionAfter && !notesDiffer();
}

Difference compareKeys(const fs::path& key, const fs::path& other) {
    const Side after = look(key);
    const Side before = look(other);
    Difference difference;
    difference.versionBefore = before.version;
    difference.versionAfter = after.version;
    difference.bothAreKeys = before.isKey && after.isKey;
    difference.notesBefore = before.notes;
    difference.notesAfter = after.notes;
    difference.files = compareFiles(before.files, after.files);
    const auto notOnKey =
        std::count_if(difference.files.begin(), difference.files.end(),
                      [](const FileChange& c) { return c.kind == FileChange::Kind::Gone; });
    difference.same =
        after.files.size() - difference.files.size() + static_cast<std::size_t>(notOnKey);
    return difference;
}
