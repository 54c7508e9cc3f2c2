// The reports on keys.

#include "tools/updatekey/report/report.h"

#include <algorithm>

#include "tools/host/printable.h"
#include "tools/updatekey/report/report_words.h"

namespace {

std::string summary(const Findings& findings) {
    if (findings.empty())
        return "There are no findings.\n";
    std::size_t errors = 0;
    for (const Finding& finding : findings)
        errors += finding.severity == Severity::Error ? 1U : 0U;
    return countWords(errors, "error") + ", " + countWords(findings.size() - errors, "warning") +
           ".\n";
}

std::string predictionText(const CheckReport& report) {
    const Prediction& prediction = report.prediction;
    if (!prediction.accepted)
        return "The device will not accept this key.\n";
    std::string text = "The device will accept this key, version \"" +
                       printable(prediction.version) + "\", and copy " +
                       countWords(prediction.copied.size(), "file") + " (" +
                       sizeWords(report.copiedBytes) + ").\n";
    text += "Space needed on the flash disk during the update: " + sizeWords(report.flashNeeded) +
            ".\n";
    if (report.manifest == ManifestState::Absent && !hasErrors(report.findings))
        text += "It has no manifest, so its bytes were not compared.\n";
    return text;
}

}  // namespace

std::string findingsText(const Findings& findings) {
    std::string text;
    for (const Finding& finding : findings) {
        text += finding.severity == Severity::Error ? "error:   " : "warning: ";
        text += "[" + finding.code + "] ";
        text += finding.path.empty() ? "" : printable(finding.path) + ": ";
        text += finding.text + "\n";
    }
    return text;
}

std::string checkText(const CheckReport& report) {
    std::string text = predictionText(report);
    text += report.notCopied.empty() ? "" : "It will NOT copy:\n";
    return text + linesText("  ", report.notCopied) + findingsText(report.findings) +
           summary(report.findings);
}

std::string makeText(const MakeReport& report, const std::filesystem::path& out) {
    return linesText("left out: ", report.leftOut) + checkText(report.check) +
           (report.written ? "The key is in " + out.generic_string() + ".\n"
                           : "The key was not made, because it has errors.\n");
}

std::string imageText(const ImageReport& report, const std::filesystem::path& out) {
    return checkText(report.check) +
           (report.written
                ? "The image is " + out.generic_string() + ", " + sizeWords(report.bytes) +
                      "; it was read back, and contains the key's files.\n"
                : "The image was not made, because the key has errors.\n");
}

std::string infoText(const KeyInfo& info) {
    std::string text;
    text += "accepted by device:  " + std::string(info.accepted ? "yes" : "no") + "\n";
    text += "version:             " + (info.accepted ? printable(info.version) : "-") + "\n";
    text +=
        "application:         " + filesWords(info.application.files, info.application.bytes) + "\n";
    text += "GUI data:            " + filesWords(info.guiData.files, info.guiData.bytes) + "\n";
    text += "whole key:           " + filesWords(info.whole.files, info.whole.bytes) + "\n";
    text += "manifest:            " + std::string(textOf(info.manifest)) + "\n";
    text += "release notes:       " + countWords(info.notes.size(), "line") + "\n";
    text += linesText("  | ", info.notes);
    text += "files and folders:\n";
    for (const TreeEntry& entry : info.tree) {
        const auto depth =
            static_cast<std::size_t>(std::count(entry.path.begin(), entry.path.end(), '/'));
        text += std::string(2 * depth + 2, ' ') + printable(nameOf(entry.path));
        text += entry.kind == TreeEntry::Kind::Folder ? "/\n" : "  " + sizeWords(entry.size) + "\n";
    }
    return text;
}
