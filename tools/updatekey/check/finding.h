// A finding: a fault of a key, described for the person who makes the key.
#pragma once

#include <string>
#include <vector>

// An error: the device will not do what the key is meant for. A warning: it will, but the key
// should be reviewed.
enum class Severity { Warning, Error };

struct Finding {
    Severity severity;
    std::string code;  // stable, for scripts: "not-copied"
    std::string path;  // relative to the key; empty for the key as a whole
    std::string text;
};

using Findings = std::vector<Finding>;

inline void addError(Findings& findings, const std::string& code, const std::string& path,
                     const std::string& text) {
    findings.push_back({Severity::Error, code, path, text});
}

inline void addWarning(Findings& findings, const std::string& code, const std::string& path,
                       const std::string& text) {
    findings.push_back({Severity::Warning, code, path, text});
}
