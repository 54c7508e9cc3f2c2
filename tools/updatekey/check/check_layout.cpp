// Checks whether the device will accept the key, and whether the update contains the application.

#include <algorithm>

#include "tools/diagnosis/installation.h"
#include "tools/updatekey/check/checks.h"

namespace {

using Kind = TreeEntry::Kind;
using keypaths::APPLICATION;
using keypaths::GUI;
using keypaths::GUI_DATA;
using keypaths::MAKER;

// Returns a hint when the update is elsewhere in the folder that was given as the key.
std::string hintAtTree(const KeyUnderCheck& key) {
    const std::string ending = "/" + MAKER;
    for (const TreeEntry& entry : key.tree) {
        const bool nested =
            entry.path.size() > ending.size() &&
            entry.path.compare(entry.path.size() - ending.size(), std::string::npos, ending) == 0;
        if (nested && key.hasFolder(entry.path + "/" + keylayout::APPLICATION))
            return "; there is one at " + entry.path + ": move it to the key's root";
    }
    if (key.hasFolder(keypaths::UNFINISHED))
        return ", only " + keypaths::UNFINISHED +
               ": writing this stick was interrupted; write it again";
    if (!key.hasFolder(keylayout::APPLICATION) || !key.hasFolder(keylayout::GUI))
        return "; check whether KEY is the root of the storage device";
    return std::filesystem::weakly_canonical(key.folder).filename() == MAKER
               ? "; this is the folder VELD itself: give its parent folder"
               : "; the folders KSTRL and ORBUI are in the key's root: move them into VELD";
}

void explainWhyNotAccepted(KeyUnderCheck& key) {
    if (!key.hasFolder(MAKER))
        return key.add("no-maker-folder", MAKER,
                       "there is no folder VELD on the key" + hintAtTree(key));
    const std::size_t before = key.report.findings.size();
    if (!key.hasFolder(APPLICATION))
        key.add("no-application-folder", APPLICATION, "there is no folder KSTRL" + hintAtTree(key));
    if (!key.hasFolder(GUI))
        key.add("no-gui-folder", GUI, "there is no folder ORBUI");
    else if (!key.hasFolder(GUI_DATA))
        key.add("no-gui-data", GUI_DATA, "ORBUI has no folder data");
    const bool misnamed = key.report.findings.size() > before ||
                          key.find(APPLICATION)->path != APPLICATION || key.find(GUI)->path != GUI;
    if (misnamed)
        return;
    const auto contains = [&](const std::string& folder, auto isMeant) {
        return std::any_of(key.tree.begin(), key.tree.end(), [&](const TreeEntry& entry) {
            return parentOf(entry.path) == folder && isMeant(entry);
        });
    };
    if (!contains(APPLICATION, [](const TreeEntry& entry) { return entry.kind == Kind::File; }))
        key.add("application-empty", APPLICATION, "KSTRL contains no file");
    if (!contains(GUI_DATA, [](const TreeEntry&) { return true; }))
        key.add("gui-data-empty", GUI_DATA, "ORBUI/data is empty");
}

// FAT32 and the device ignore case, but the engine looks for the folders KSTRL and ORBUI by their
// exact names, and the updater can end a running application only by its exact name.
void checkCase(KeyUnderCheck& key) {
    for (const std::string& required :
         {MAKER, APPLICATION, GUI, GUI_DATA, keypaths::NOTES, keypaths::PROGRAM}) {
        const TreeEntry* const entry = key.find(required);
        if (entry != nullptr && nameOf(entry->path) != nameOf(required))
            key.add(entry->kind == Kind::Folder ? "name-case" : "file-name-case", entry->path,
                    "must be named " + nameOf(required) + "; rename it");
    }
}

}  // namespace

void checkLayout(KeyUnderCheck& key) {
    if (!key.report.prediction.accepted)
        explainWhyNotAccepted(key);
    // A flash disk has the folders of a key too, and the device would accept it.
    for (const std::string& name : {keylayout::LOG + std::string(), APPLICATION_BACKUP, GUI_BACKUP})
        if (const TreeEntry* const entry = key.find(MAKER + "/" + name))
            return key.add("not-a-key", entry->path,
                           "is on no key: this is the flash disk of an instrument; examine it with "
                           "updatekey diagnose");
    checkCase(key);
    if (!key.hasFolder(APPLICATION))
        return;
    const TreeEntry* const program = key.find(keypaths::PROGRAM);
    if (program == nullptr || program->kind != Kind::File)
        key.add("no-application", keypaths::PROGRAM,
                "is missing; the device could not start an application after the update");
    else if (program->size == 0)
        key.add("application-damaged", keypaths::PROGRAM, "the application is empty");
}
