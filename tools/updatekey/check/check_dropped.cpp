// Checks for files that the device should not copy, and for files that it ignores.

#include <map>

#include "tools/host/host_file.h"
#include "tools/updatekey/check/checks.h"
#include "tools/updatekey/check/names.h"

namespace {

// Returns the topmost folder that is ignored as a whole, or the path itself for a single file.
std::string droppedTop(const std::string& path) {
    for (std::size_t slash = path.find('/'); slash != std::string::npos;
         slash = path.find('/', slash + 1)) {
        const std::string folder = path.substr(0, slash);
        const bool isRead = folder == keypaths::MAKER || folder == keypaths::APPLICATION ||
                            folder == keypaths::GUI || folder == keypaths::GUI_DATA ||
                            parentOf(folder) == keypaths::GUI_DATA;
        if (!isRead)
            return folder + "/";
    }
    return path;
}

}  // namespace

void checkDropped(KeyUnderCheck& key) {
    const Prediction& prediction = key.report.prediction;
    const TreeEntry* const notes = key.find(keypaths::NOTES);
    std::map<std::string, std::size_t> dropped;
    for (const TreeEntry& entry : key.tree) {
        const bool copied = prediction.copied.count(entry.path) != 0;
        if (copied) {
            key.report.copiedBytes += entry.size;
            if (isJunkPath(entry.path))
                key.add("litter", entry.path,
                        "is a junk file of a desktop system or a programming tool, which the "
                        "device would install; delete it");
        }
        const bool judged = startsWith(entry.path, keypaths::MAKER + "/") && &entry != notes;
        if (copied || !judged || !prediction.accepted || entry.kind == TreeEntry::Kind::Folder)
            continue;
        key.report.notCopied.push_back(entry.path);
        if (entry.kind != TreeEntry::Kind::File)
            continue;
        if (prediction.lost.count(entry.path) != 0) {
            // A file that this computer cannot read says nothing about the device.
            requireReadable(key.folder / entry.path);
            key.add("copy-fails", entry.path,
                    "the device lists this file but cannot copy it, and reports no error");
        } else if (!isJunkPath(entry.path) && isLatin1(entry.path)) {
            ++dropped[droppedTop(entry.path)];
        }
    }
    for (const auto& [top, files] : dropped)
        key.add("not-copied", top,
                "the device does not copy this (" + std::to_string(files) +
                    (files == 1 ? " file)" : " files)"));
}
