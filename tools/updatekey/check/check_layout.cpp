// Checks whether the device will accept the key, and whether the update contains the application.

#include "tools/updatekey/check/check.h"
#include "tools/updatekey/check/key_paths.h"
#include "tools/updatekey/check/names.h"

namespace {

using Kind = TreeEntry::Kind;
using keypaths::APPLICATION;
using keypaths::GUI;
using keypaths::GUI_DATA;
using keypaths::MAKER;

bool isFolder(const KeyUnderCheck& key, const std::string& path) {
    const TreeEntry* const entry = key.find(path);
    return entry != nullptr && entry->kind == Kind::Folder;
}

// Returns a hint when the folders of the update are on the key, but one folder too deep or too
// high.
std::string hintAtTree(const KeyUnderCheck& key) {
    for (const TreeEntry& entry : key.tree) {
        const bool nested = entry.path.size() > 5 && entry.kind == Kind::Folder &&
                            entry.path.compare(entry.path.size() - 5, 5, "/VELD") == 0;
        if (nested && key.find(entry.path + "/KSTRL") != nullptr)
            return "; there is one at " + entry.path + ": move it to the key's root";
    }
    return key.find("KSTRL") != nullptr && key.find("ORBUI") != nullptr
               ? "; the folders KSTRL and ORBUI are in the key's root: move them into VELD"
               : "; check whether KEY is the root of the storage device";
}

void explainWhyNotSeen(const KeyUnderCheck& key, Findings& findings) {
    if (!isFolder(key, MAKER))
        return addError(findings, "no-maker-folder", MAKER,
                        "there is no folder VELD on the key" + hintAtTree(key));
    const std::size_t before = findings.size();
    if (!isFolder(key, APPLICATION))
        addError(findings, "no-application-folder", APPLICATION,
                 "there is no folder KSTRL" + hintAtTree(key));
    if (!isFolder(key, GUI))
        addError(findings, "no-gui-folder", GUI, "there is no folder ORBUI");
    else if (!isFolder(key, GUI_DATA))
        addError(findings, "no-gui-data", GUI_DATA, "ORBUI has no folder data");
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
        addError(findings, "application-empty", APPLICATION, "KSTRL contains no file");
    if (!guiEntry)
        addError(findings, "gui-data-empty", GUI_DATA, "ORBUI/data is empty");
}

// FAT32 and the device ignore case, but the engine looks for the folders KSTRL and ORBUI by their
// exact names, and the updater can end a running application only by its exact name.
void checkCase(const KeyUnderCheck& key, Findings& findings) {
    for (const std::string& required :
         {MAKER, APPLICATION, GUI, GUI_DATA, keypaths::NOTES, keypaths::PROGRAM}) {
        const TreeEntry* const entry = key.find(required);
        if (entry == nullptr || nameOf(entry->path) == nameOf(required))
            continue;
        findings.push_back({entry->kind == Kind::Folder ? Severity::Error : Severity::Warning,
                            "name-case", entry->path,
                            "must be named " + nameOf(required) + "; rename it"});
    }
}

}  // namespace

void checkLayout(const KeyUnderCheck& key, CheckReport& report) {
    if (!report.prediction.seen)
        explainWhyNotSeen(key, report.findings);
    checkCase(key, report.findings);
    if (!isFolder(key, APPLICATION))
        return;
    const std::string& application = keypaths::PROGRAM;
    const TreeEntry* const entry = key.find(application);
    if (entry == nullptr || entry->kind != Kind::File)
        addError(report.findings, "no-application", application,
                 "is missing; the device could not start an application after the update");
    else if (entry->size == 0)
        addError(report.findings, "application-damaged", application, "the application is empty");
}
