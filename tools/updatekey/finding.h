// What is wrong with a key, in the words of the person who made it.
#pragma once

#include <string>
#include <vector>

// An error: the device will not do what the key's maker meant. A warning: it will, but look at it.
enum class Severity { warning, error };

struct Finding {
    Severity severity;
    std::string code;  // stable, for scripts: "not-copied"
    std::string path;  // relative to the key; empty when it is about the key as a whole
    std::string text;
};

using Findings = std::vector<Finding>;

inline void addError(Findings& findings, const std::string& code, const std::string& path,
                     const std::string& text) {
    findings.push_back({Severity::error, code, path, text});
}

inline void addWarning(Findings& findings, const std::string& code, const std::string& path,
                       const std::string& text) {
    findings.push_back({Severity::warning, code, path, text});
}
