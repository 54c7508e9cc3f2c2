#include "tools/diagnosis/finding.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <sstream>
#include <stdexcept>

namespace {

std::set<std::string> words(const char* text) {
    std::istringstream stream(text);
    return {std::istream_iterator<std::string>(stream), {}};
}

const std::map<Severity, std::set<std::string>> FINDING_CODES = {
    {Severity::Error,
     words("no-maker-folder no-application-folder no-gui-folder no-gui-data application-empty "
           "gui-data-empty name-case no-application application-damaged application-machine "
           "not-copied copy-fails litter not-a-file case-clash name-not-fat file-too-large "
           "name-not-latin1 path-too-long notes-missing notes-no-version notes-prefix-misplaced "
           "notes-no-final-line-feed notes-carriage-return notes-cut notes-nul font-missing "
           "font-damaged font-page-missing font-page-size background-missing background-size "
           "table-missing table-encoding table-line-end text-missing manifest-mismatch "
           "manifest-unknown-file manifest-missing-file manifest-damaged flash-too-small not-a-key "
           "short-name-clash not-a-folder stray-files files-not-copied disk-full")},
    {Severity::Warning,
     words("file-name-case notes-second-version version-differs notes-utf8 notes-missing-glyph "
           "notes-line-too-wide notes-too-many-lines spare-font-missing font-size numerals-missing "
           "table-language text-too-wide text-missing-glyph text-off-marker flash-tight "
           "version-older version-same disk-space log-contradicts log-odd language-unknown")},
};

}  // namespace

bool isFindingCode(const std::string& code) {
    return std::any_of(FINDING_CODES.begin(), FINDING_CODES.end(),
                       [&](const auto& kind) { return kind.second.count(code) != 0; });
}

void addFinding(Findings& findings, const std::string& code, const std::string& path,
                const std::string& text) {
    if (!isFindingCode(code))
        throw std::logic_error(code + " is not the code of a finding");
    const bool isError = FINDING_CODES.at(Severity::Error).count(code) != 0;
    findings.push_back({isError ? Severity::Error : Severity::Warning, code, path, text});
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
