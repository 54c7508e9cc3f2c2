// Reads the updater's log, and explains its lines to a technician.
#pragma once

#include <string>
#include <vector>

// A kind of line. "%" in the pattern matches any text.
struct LogLineKind {
    const char* pattern;
    const char* meaning;
};

// All kinds of lines that the updater writes. The README has the same list.
extern const std::vector<LogLineKind> LOG_LINE_KINDS;

// The outcome of the update according to the log.
enum class LogOutcome {
    NoLog,      // the log is missing or empty
    NoUpdate,   // the updater ran, but the log shows no outcome
    Succeeded,  // "Update succeeded at "
    Failed,     // "Update failed."
};

struct LogLine {
    std::string text;     // printable
    std::string meaning;  // empty for a line that the updater does not write
};

struct LogReading {
    LogOutcome outcome = LogOutcome::NoLog;
    std::vector<LogLine> lines;  // without the empty ones
};

LogReading readLog(const std::string& bytes);
