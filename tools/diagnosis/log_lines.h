// Reads the updater's log, and explains its lines to a technician.
#pragma once

#include <deque>
#include <string>

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
    std::deque<LogLine> lines;  // the last ones, without the empty ones
    std::size_t earlier = 0;    // the number of lines before them
    std::size_t foreign = 0;    // of all lines, those that the updater does not write
    std::size_t notCopied = 0;  // of all lines, reports of a file that was not copied
};

LogReading readLog(const std::string& bytes);
