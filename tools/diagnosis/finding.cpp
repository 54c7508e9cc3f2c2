#include "tools/diagnosis/finding.h"

#include <algorithm>
#include <stdexcept>

const std::vector<FindingKind> FINDING_KINDS = {
    {"no-maker-folder", Severity::Error},
    {"no-application-folder", Severity::Error},
    {"no-gui-folder", Severity::Error},
    {"no-gui-data", Severity::Error},
    {"application-empty", Severity::Error},
    {"gui-data-empty", Severity::Error},
    {"name-case", Severity::Error},
    {"file-name-case", Severity::Warning},
    {"no-application", Severity::Error},
    {"application-damaged", Severity::Error},
    {"application-machine", Severity::Error},
    {"not-copied", Severity::Error},
    {"copy-fails", Severity::Error},
    {"litter", Severity::Error},
    {"not-a-file", Severity::Error},
    {"case-clash", Severity::Error},
    {"name-not-fat", Severity::Error},
    {"file-too-large", Severity::Error},
    {"name-not-latin1", Severity::Error},
    {"path-too-long", Severity::Error},
    {"notes-missing", Severity::Error},
    {"notes-no-version", Severity::Error},
    {"notes-prefix-misplaced", Severity::Error},
    {"notes-second-version", Severity::Warning},
    {"version-differs", Severity::Warning},
    {"notes-no-final-line-feed", Severity::Error},
    {"notes-carriage-return", Severity::Error},
    {"notes-cut", Severity::Error},
    {"notes-nul", Severity::Error},
    {"notes-utf8", Severity::Warning},
    {"notes-missing-glyph", Severity::Warning},
    {"notes-line-too-wide", Severity::Warning},
    {"notes-too-many-lines", Severity::Warning},
    {"font-missing", Severity::Error},
    {"spare-font-missing", Severity::Warning},
    {"font-damaged", Severity::Error},
    {"font-page-missing", Severity::Error},
    {"font-page-size", Severity::Error},
    {"font-size", Severity::Warning},
    {"background-missing", Severity::Error},
    {"background-size", Severity::Error},
    {"table-missing", Severity::Error},
    {"numerals-missing", Severity::Warning},
    {"table-encoding", Severity::Error},
    {"table-line-end", Severity::Error},
    {"table-language", Severity::Warning},
    {"text-missing", Severity::Error},
    {"text-too-wide", Severity::Warning},
    {"text-missing-glyph", Severity::Warning},
    {"text-off-marker", Severity::Warning},
    {"manifest-mismatch", Severity::Error},
    {"manifest-unknown-file", Severity::Error},
    {"manifest-missing-file", Severity::Error},
    {"manifest-damaged", Severity::Error},
    {"flash-too-small", Severity::Error},
    {"flash-tight", Severity::Warning},
    {"version-older", Severity::Warning},
    {"version-same", Severity::Warning},
    {"not-a-key", Severity::Error},
    {"short-name-clash", Severity::Error},
    {"not-a-folder", Severity::Error},
    {"stray-files", Severity::Error},
    {"files-not-copied", Severity::Error},
    {"disk-full", Severity::Error},
    {"disk-space", Severity::Warning},
    {"log-contradicts", Severity::Warning},
    {"log-odd", Severity::Warning},
    {"language-unknown", Severity::Warning},
};

const FindingKind* findFindingKind(const std::string& code) {
    const auto kind = std::find_if(FINDING_KINDS.begin(), FINDING_KINDS.end(),
                                   [&](const FindingKind& known) { return known.code == code; });
    return kind == FINDING_KINDS.end() ? nullptr : &*kind;
}

void addFinding(Findings& findings, const std::string& code, const std::string& path,
                const std::string& text) {
    const FindingKind* const kind = findFindingKind(code);
    if (kind == nullptr)
        throw std::logic_error(code + " is not a kind of finding");
    findings.push_back({kind->severity, code, path, text});
}

void removeFindings(Findings& findings, const std::set<std::string>& codes) {
    findings.erase(
        std::remove_if(findings.begin(), findings.end(),
                       [&](const Finding& finding) { return codes.count(finding.code) != 0; }),
        findings.end());
}

bool hasErrors(const Findings& findings) {
    return std::any_of(findings.begin(), findings.end(),
                       [](const Finding& finding) { return finding.severity == Severity::Error; });
}
