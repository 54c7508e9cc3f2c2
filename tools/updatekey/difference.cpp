#include "tools/updatekey/difference.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <sstream>

#include "tools/diagnosis/installation.h"
#include "tools/host/printable.h"
#include "tools/host/trial_device.h"
#include "tools/updatekey/check/key_paths.h"
#include "tools/updatekey/check/prediction.h"

namespace fs = std::filesystem;

namespace {

// Returns the numbers of a version such as "2.14.3"; nothing for another kind of text.
std::vector<long> numbersOf(const std::string& version) {
    std::vector<long> numbers;
    std::istringstream parts(version);
    for (std::string part; std::getline(parts, part, '.');) {
        if (part.empty() || part.find_first_not_of("0123456789") != std::string::npos)
            return {};
        numbers.push_back(std::strtol(part.c_str(), nullptr, 10));
    }
    return numbers;
}

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
    side.version = applicationVersion(entryAt(maker, keylayout::APPLICATION));
    if (maker != entryAt(folder, keypaths::MAKER) || !isOnKey(maker))
        return side;
    side.isKey = true;
    const TrialDevice device(folder);
    const Prediction prediction = predict({});
    side.version = prediction.version;
    for (const std::string& line : prediction.notes)
        side.notes.push_back(latin1ToUtf8(line));
    for (auto file = side.files.begin(); file != side.files.end();) {
        const bool taken = prediction.copied.count(keypaths::MAKER + "/" + file->first) != 0;
        file = taken ? std::next(file) : side.files.erase(file);
    }
    return side;
}

}  // namespace

void checkVersions(const std::string& before, const std::string& after, Findings& findings) {
    const std::vector<long> old = numbersOf(before);
    const std::vector<long> update = numbersOf(after);
    if (!after.empty() && before == after)
        addFinding(findings, "version-same", "", "the version stays " + after);
    else if (!old.empty() && !update.empty() && update < old)
        addFinding(findings, "version-older", "",
                   "the update goes back from version " + before + " to " + after);
}

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
    if (!difference.files.empty())
        checkVersions(before.version, after.version, difference.findings);
    return difference;
}
