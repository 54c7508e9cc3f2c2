// What the updater's log says, line by line, in words for a technician.
#pragma once

#include <string>
#include <vector>

// One kind of line. "%" in the pattern stands for any text.
struct LogLineKind {
    const char* pattern;
    const char* meaning;
};

// All kinds that the updater writes, the more special ones first. The README shows them too.
extern const std::vector<LogLineKind> LOG_LINE_KINDS;

// The last word of a log on its update.
enum class LogOutcome {
    noLog,      // there is none, or it is empty
    noUpdate,   // the updater ran; nothing tells of an end
    succeeded,  // "Update succeeded at "
    failed,     // "Update failed."
};

struct LogLine {
    std::string text;     // printable
    std::string meaning;  // empty for a line that the updater does not write
};

struct LogReading {
    LogOutcome outcome = LogOutcome::noLog;
    std::vector<LogLine> lines;  // without the empty ones
};

LogReading readLog(const std::string& bytes);

// The meaning of an error number of the system's in a line of the log; empty for one that is rare.
std::string errorMeaning(int number);
