// A finding: a fault of a key or of an instrument, described for the person who has it in hand.
#pragma once

#include <set>
#include <string>
#include <vector>

// An error: the device will not do what it is meant to do. A warning: it will, but somebody should
// look at it.
enum class Severity { Warning, Error };

// Whether this is the code of a finding, such as "not-copied". Scripts use the codes, so they never
// change. The release engineer's guide and the technician's guide explain them.
bool isFindingCode(const std::string& code);

struct Finding {
    Severity severity;
    std::string code;
    std::string path;  // relative to the key or the maker's folder; empty for the whole
    std::string text;
};

using Findings = std::vector<Finding>;

// Adds a finding with one of the codes.
void addFinding(Findings& findings, const std::string& code, const std::string& path,
                const std::string& text);

// Removes the findings with these codes.
void removeFindings(Findings& findings, const std::set<std::string>& codes);

bool hasErrors(const Findings& findings);
