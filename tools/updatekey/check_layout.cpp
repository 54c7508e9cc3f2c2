// Whether the device sees the key, and what it needs to start the application afterwards.

#include "tools/updatekey/check.h"
#include "tools/updatekey/names.h"

namespace {

using Kind = KeyEntry::Kind;

constexpr const char* REQUIRED[] = {"VELD",
                                    "VELD/KSTRL",
                                    "VELD/ORBUI",
                                    "VELD/ORBUI/data",
                                    "VELD/kstrXReleaseNotes.txt",
                                    "VELD/KSTRL/KSTRL.exe"};

bool isFolder(const KeyUnderCheck& key, const std::string& path) {
    const KeyEntry* const entry = key.find(path);
    return entry != nullptr && entry->kind == Kind::folder;
}

void explainWhyNotSeen(const KeyUnderCheck& key, Findings& findings) {
    if (!isFolder(key, "VELD"))
        return addError(findings, "no-maker-folder", "VELD", "there is no folder VELD on the key");
    const std::size_t before = findings.size();
    if (!isFolder(key, "VELD/KSTRL"))
        addError(findings, "no-application-folder", "VELD/KSTRL", "there is no folder KSTRL");
    if (!isFolder(key, "VELD/ORBUI"))
        addError(findings, "no-gui-folder", "VELD/ORBUI", "there is no folder ORBUI");
    else if (!isFolder(key, "VELD/ORBUI/data"))
        addError(findings, "no-gui-data", "VELD/ORBUI/data", "ORBUI has no folder data");
    if (findings.size() > before)
        return;
    bool applicationFile = false;
    bool guiEntry = false;
    for (const KeyEntry& entry : key.tree) {
        const std::string parent = parentOf(entry.path);
        applicationFile |= parent == "VELD/KSTRL" && entry.kind == Kind::file;
        guiEntry |= parent == "VELD/ORBUI/data";
    }
    if (!applicationFile)
        addError(findings, "application-empty", "VELD/KSTRL", "KSTRL holds no file");
    if (!guiEntry)
        addError(findings, "gui-data-empty", "VELD/ORBUI/data", "ORBUI/data holds nothing");
}

// The device opens a name in any case, but looks for the folders of the key by comparing exactly.
void checkCase(const KeyUnderCheck& key, Findings& findings) {
    for (const char* const required : REQUIRED) {
        if (key.find(required) != nullptr)
            continue;
        for (const KeyEntry& entry : key.tree)
            if (foldCase(entry.path) == foldCase(required))
                addError(findings, "name-case", entry.path,
                         "must be written " + std::string(required));
    }
}

}  // namespace

void checkLayout(const KeyUnderCheck& key, CheckReport& report) {
    if (!report.prediction.seen)
        explainWhyNotSeen(key, report.findings);
    checkCase(key, report.findings);
    if (!isFolder(key, "VELD/KSTRL"))
        return;
    const std::string application = "VELD/KSTRL/KSTRL.exe";
    const KeyEntry* const entry = key.find(application);
    if (entry == nullptr || entry->kind != Kind::file)
        addError(report.findings, "no-application", application,
                 "after the update there is no application to start");
    else if (entry->size == 0)
        addError(report.findings, "application-damaged", application, "the application is empty");
}
