// Checks whether the device will accept the key, and whether the update contains the application.

#include "tools/diagnosis/installation.h"
#include "tools/updatekey/check/checks.h"
#include "tools/updatekey/check/key_paths.h"

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

void explainWhyNotAccepted(const KeyUnderCheck& key, Findings& findings) {
    if (!key.hasFolder(MAKER))
        return addFinding(findings, "no-maker-folder", MAKER,
                          "there is no folder VELD on the key" + hintAtTree(key));
    const std::size_t before = findings.size();
    if (!key.hasFolder(APPLICATION))
        addFinding(findings, "no-application-folder", APPLICATION,
                   "there is no folder KSTRL" + hintAtTree(key));
    if (!key.hasFolder(GUI))
        addFinding(findings, "no-gui-folder", GUI, "there is no folder ORBUI");
    else if (!key.hasFolder(GUI_DATA))
        addFinding(findings, "no-gui-data", GUI_DATA, "ORBUI has no folder data");
    if (findings.size() > before)
        return;
    const bool misnamed = key.find(APPLICATION)->path != APPLICATION || key.find(GUI)->path != GUI;
    if (misnamed)
        return;
    bool applicationFile = false;
    bool guiEntry = false;
    for (const TreeEntry& entry : key.tree) {
        const std::string parent = parentOf(entry.path);
        applicationFile |= parent == APPLICATION && entry.kind == Kind::File;
        guiEntry |= parent == GUI_DATA;
    }
    if (!applicationFile)
        addFinding(findings, "application-empty", APPLICATION, "KSTRL contains no file");
    if (!guiEntry)
        addFinding(findings, "gui-data-empty", GUI_DATA, "ORBUI/data is empty");
}

// FAT32 and the device ignore case, but the engine looks for the folders KSTRL and ORBUI by their
// exact names, and the updater can end a running application only by its exact name.
void checkCase(const KeyUnderCheck& key, Findings& findings) {
    for (const std::string& required :
         {MAKER, APPLICATION, GUI, GUI_DATA, keypaths::NOTES, keypaths::PROGRAM}) {
        const TreeEntry* const entry = key.find(required);
        if (entry != nullptr && nameOf(entry->path) != nameOf(required))
            addFinding(findings, entry->kind == Kind::Folder ? "name-case" : "file-name-case",
                       entry->path, "must be named " + nameOf(required) + "; rename it");
    }
}

}  // namespace

void checkLayout(const KeyUnderCheck& key, CheckReport& report) {
    if (!report.prediction.accepted)
        explainWhyNotAccepted(key, report.findings);
    // A flash disk has the folders of a key too, and the device would accept it.
    for (const std::string& name : {keylayout::LOG + std::string(), APPLICATION_BACKUP, GUI_BACKUP})
        if (const TreeEntry* const entry = key.find(MAKER + "/" + name))
            return addFinding(report.findings, "not-a-key", entry->path,
                              "is on no key: this is the flash disk of an instrument; examine it "
                              "with updatekey diagnose");
    checkCase(key, report.findings);
    if (!key.hasFolder(APPLICATION))
        return;
    const std::string& application = keypaths::PROGRAM;
    const TreeEntry* const entry = key.find(application);
    if (entry == nullptr || entry->kind != Kind::File)
        addFinding(report.findings, "no-application", application,
                   "is missing; the device could not start an application after the update");
    else if (entry->size == 0)
        addFinding(report.findings, "application-damaged", application, "the application is empty");
}
