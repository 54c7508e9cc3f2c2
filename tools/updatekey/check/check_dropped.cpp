// Checks for files that the device should not copy, and for files that it ignores.

#include <map>
#include <set>

#include "tools/updatekey/check/checks.h"
#include "tools/updatekey/check/key_paths.h"
#include "tools/updatekey/check/names.h"

namespace {

using Kind = TreeEntry::Kind;

const std::string MAKER = keypaths::MAKER + "/";
const std::string GUI_DATA = keypaths::GUI_DATA + "/";
const std::string APPLICATION = keypaths::APPLICATION + "/";
const std::string GUI = keypaths::GUI + "/";

// Returns the topmost folder that is ignored as a whole, or the path itself for a single file.
std::string droppedTop(const std::string& path) {
    const auto firstFolderBelow = [&](const std::string& start) {
        const std::size_t slash = path.find('/', start.size());
        return slash == std::string::npos ? path : path.substr(0, slash + 1);
    };
    if (startsWith(path, APPLICATION))
        return firstFolderBelow(APPLICATION);
    if (startsWith(path, GUI_DATA)) {
        const std::size_t subfolder = path.find('/', GUI_DATA.size());
        return subfolder == std::string::npos ? path
                                              : firstFolderBelow(path.substr(0, subfolder + 1));
    }
    if (startsWith(path, GUI))
        return firstFolderBelow(GUI);
    return firstFolderBelow(MAKER);
}

std::string countOf(std::size_t files) {
    return files == 1 ? "1 file" : std::to_string(files) + " files";
}

}  // namespace

void checkDropped(const KeyUnderCheck& key, CheckReport& report) {
    const Prediction& prediction = report.prediction;
    const TreeEntry* const notes = key.find(keypaths::NOTES);
    std::map<std::string, std::size_t> dropped;
    for (const TreeEntry& entry : key.tree) {
        const bool copied = prediction.copied.count(entry.path) != 0;
        if (copied) {
            report.copiedBytes += entry.size;
            if (isJunkPath(entry.path))
                addFinding(report.findings, "litter", entry.path,
                           "is a junk file of a desktop system or a programming tool, which the "
                           "device would install; delete it");
        }
        const bool judged = startsWith(entry.path, MAKER) && &entry != notes;
        if (copied || !judged || !prediction.accepted || entry.kind == Kind::Folder)
            continue;
        report.notCopied.push_back(entry.path);
        if (entry.kind != Kind::File)
            continue;
        if (prediction.lost.count(entry.path) != 0)
            addFinding(report.findings, "copy-fails", entry.path,
                       "the device lists this file but cannot copy it, and reports no error");
        else if (!isJunkPath(entry.path) && isLatin1(entry.path))
            ++dropped[droppedTop(entry.path)];
    }
    for (const auto& [top, files] : dropped)
        addFinding(report.findings, "not-copied", top,
                   "the device does not copy this (" + countOf(files) + ")");
}
