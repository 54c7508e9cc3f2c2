#include "tools/updatekey/report.h"

#include <algorithm>
#include <cstdio>

#include "support/file_util.h"
#include "tools/updatekey/info.h"

namespace {

std::string sizeOf(uint64_t bytes) {
    return sizeText(static_cast<int64_t>(bytes));
}

std::string countOf(std::size_t count, const std::string& noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

std::string findingsText(const Findings& findings) {
    std::string text;
    for (const Finding& finding : findings) {
        text += finding.severity == Severity::error ? "error:   " : "warning: ";
        text += "[" + finding.code + "] ";
        text += finding.path.empty() ? "" : finding.path + ": ";
        text += finding.text + "\n";
    }
    return text;
}

std::string summary(const Findings& findings) {
    const auto errors = static_cast<std::size_t>(
        std::count_if(findings.begin(), findings.end(),
                      [](const Finding& f) { return f.severity == Severity::error; }));
    if (findings.empty())
        return "Nothing was found.\n";
    return countOf(errors, "error") + ", " + countOf(findings.size() - errors, "warning") + ".\n";
}

std::string predictionText(const CheckReport& report) {
    const Prediction& prediction = report.prediction;
    if (!prediction.seen)
        return "The device will not see this key.\n";
    std::string text = "The device will see this key, version \"" + prediction.version +
                       "\", and copy " + countOf(prediction.copied.size(), "file") + " (" +
                       sizeOf(report.copiedBytes) + ").\n";
    text += "Needed on the flash disk at once: " + sizeOf(report.flashNeeded) + ".\n";
    return text;
}

std::string folderText(const FolderInfo& folder) {
    return countOf(folder.files, "file") + ", " + sizeOf(folder.bytes);
}

}  // namespace

std::string checkText(const CheckReport& report) {
    std::string text = predictionText(report);
    if (!report.notCopied.empty()) {
        text += "It will NOT copy:\n";
        for (const std::string& path : report.notCopied)
            text += "  " + path + "\n";
    }
    return text + findingsText(report.findings) + summary(report.findings);
}

std::string makeText(const MakeReport& report, const std::filesystem::path& out) {
    std::string text;
    for (const std::string& path : report.leftOut)
        text += "left out: " + path + "\n";
    text += checkText(report.check);
    text += report.written ? "The key is in " + out.string() + ".\n"
                           : "The key was not written, because of the errors.\n";
    return text;
}

std::string infoText(const std::filesystem::path& key) {
    const KeyInfo info = describeKey(key);
    std::string text;
    text += "seen by the device:  " + std::string(info.seen ? "yes" : "no") + "\n";
    text += "version:             " + (info.seen ? info.version : "-") + "\n";
    text += "application:         " + folderText(info.application) + "\n";
    text += "GUI data:            " + folderText(info.guiData) + "\n";
    text += "all of the key:      " + folderText(info.whole) + "\n";
    text += "manifest:            " + std::string(info.hasManifest ? "yes" : "no") + "\n";
    text += "release notes:       " + countOf(info.notes.size(), "line") + "\n";
    for (const std::string& line : info.notes)
        text += "  | " + line + "\n";
    text += "tree:\n";
    for (const KeyEntry& entry : info.tree) {
        const auto depth =
            static_cast<std::size_t>(std::count(entry.path.begin(), entry.path.end(), '/'));
        text += std::string(2 * depth + 2, ' ') + nameOf(entry.path);
        text += entry.kind == KeyEntry::Kind::folder ? "/\n" : "  " + sizeOf(entry.size) + "\n";
    }
    return text;
}

std::string rehearseText(const RehearseReport& report) {
    std::string text = checkText(report.check);
    if (!report.rehearsed)
        return text + "There is nothing to rehearse.\n";
    text += "\nDifferences on the flash disk:\n";
    for (const auto& [path, kind] : report.differences)
        text += std::string("  ") + kind + " " + path + "\n";
    text += "\nThe log:\n" + report.log + "\n";
    char took[80];
    std::snprintf(took, sizeof took, "%.2f seconds", report.seconds);
    text += "Took " + std::string(took);
    text += report.frames < 0 ? ".\n" : " and " + std::to_string(report.frames) + " frames.\n";
    if (report.timedOut)
        text += "The updater did not come to an end and was ended.\n";
    text += "State: " + std::string(stateName(report.state)) +
            (report.asPredicted ? ", with the files that were predicted.\n"
                                : "; this is NOT what was predicted.\n");
    text += report.applicationStarted ? "The application was started.\n"
                                      : "The application was not started.\n";
    return text;
}
