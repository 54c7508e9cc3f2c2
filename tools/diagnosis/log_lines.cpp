#include "tools/diagnosis/log_lines.h"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <sstream>
#include <string_view>
#include <vector>

#include "tools/host/printable.h"

namespace {

// What a line tells about the update.
enum class LogEvent { Other, Success, Failure, NotCopied };

// A kind of line. "%" in the pattern matches any text.
struct LogLineKind {
    const char* pattern;
    const char* meaning;
    LogEvent event = LogEvent::Other;
};

// All kinds of lines that the updater writes. The README has the same list, and a test compares
// both with the sources of the program.
const std::vector<LogLineKind> LOG_LINE_KINDS = {
    {"Opening log at %", "the updater was started at this local time"},
    {"  ** Warning ** Update succeeded at %", "the update succeeded; logged as a warning",
     LogEvent::Success},
    {"    *** ERROR *** Update failed.", "the update failed; the lines above give the reason",
     LogEvent::Failure},
    {"    *** ERROR *** Error % ::MoveFile: % -> % :", "a folder could not be moved"},
    {"    *** ERROR *** Error % deleting file: %", "a file of the old backup could not be deleted"},
    {"    *** ERROR *** Error % ::RemoveDirectory(%)",
     "a folder of the old backup, or the staging folder, could not be removed"},
    {"    *** ERROR *** Error % ::SetFileAttributes",
     "a file was not copied (error 2), or stayed read-only", LogEvent::NotCopied},
    {"    *** ERROR *** The display is lost: %.",
     "the updater ended because its window was gone; on Linux only"},
    {"    *** ERROR *** File % not found.", "a picture or font page of the GUI data is missing"},
    {"    *** ERROR *** File % is too short.",
     "a picture or font page of the GUI data is incomplete"},
    {"    *** ERROR *** File % is too large.",
     "there was not enough memory for a picture or font page"},
    {"    *** ERROR *** Failed to create GL texture.",
     "the graphics driver had no room for a picture or font page"},
    {"    *** ERROR *** Font file % not found.", "a font of the GUI data is missing"},
    {"    *** ERROR *** Font file % is too large.", "a font of the GUI data is damaged"},
    {"    *** ERROR *** Font % asks for too much memory.",
     "a font of the GUI data is damaged, or there was not enough memory for it"},
    {"    *** ERROR *** Language % not recognized in StringTable...",
     "the updater has no language with this number"},
    {"  ** Warning ** Error getting registry key [%].",
     "the configuration lacks this value; the updater used its default"},
    {"  ** Warning ** Error setting registry key [%].",
     "a value of the configuration could not be stored"},
    {"  ** Warning ** Error closing registry key [%].",
     "the registry reported an error after reading this value"},
    {"  ** Warning ** File % is too long; its end was not read.",
     "the release notes, a table of texts or a list of kerning pairs is damaged"},
    {"  ** Warning ** Unrecognized Char: %  %", "a text contains a character that its font lacks"},
};

// Whether the texts around the wildcards of the pattern stand in this order in the line, the first
// one at its start, the last one at its end.
bool matches(std::string_view line, std::string_view pattern) {
    std::size_t wildcard = pattern.find('%');
    if (line.substr(0, wildcard) != pattern.substr(0, wildcard))
        return false;
    while (wildcard != std::string_view::npos) {
        line.remove_prefix(wildcard);
        pattern.remove_prefix(wildcard + 1);
        wildcard = pattern.find('%');
        const std::string_view part = pattern.substr(0, wildcard);
        const std::size_t at =
            wildcard == std::string_view::npos ? line.rfind(part) : line.find(part);
        if (at == std::string_view::npos)
            return false;
        line.remove_prefix(at);
    }
    return line == pattern;
}

const LogLineKind* kindOf(const std::string& line) {
    const auto kind =
        std::find_if(LOG_LINE_KINDS.begin(), LOG_LINE_KINDS.end(),
                     [&](const LogLineKind& known) { return matches(line, known.pattern); });
    return kind == LOG_LINE_KINDS.end() ? nullptr : &*kind;
}

// Returns the system error number in a line of a kind that contains one; 0 for the others.
int errorNumber(const LogLineKind& kind, const std::string& line) {
    static const std::string WORD = "Error ";
    const std::size_t at = std::string_view(kind.pattern).find(WORD + "% ");
    return at == std::string_view::npos
               ? 0
               : static_cast<int>(std::strtol(line.c_str() + at + WORD.size(), nullptr, 10));
}

// Returns the meaning of a system error number in the log; empty for rare ones.
std::string errorMeaning(int number) {
    static const std::map<int, const char*> MEANINGS = {
        {2, "2: there is no such file"},
        {3, "3: there is no such folder"},
        {5, "5: the system refused it"},
        {17, "17: not on the same disk"},
        {32, "32: in use by a program"},
        {80, "80: a file of this name exists"},
        {112, "112: the disk is full"},
        {123, "123: the name has a character that is not allowed"},
        {145, "145: the folder is not empty"},
        {183, "183: a file or folder of this name exists"},
        {1117, "1117: the disk could not be read or written"},
    };
    const auto meaning = MEANINGS.find(number);
    return meaning == MEANINGS.end() ? std::string() : meaning->second;
}

}  // namespace

LogReading readLog(const std::string& bytes) {
    constexpr std::size_t SHOWN = 20;
    constexpr std::size_t LONGEST = 2100;  // the updater's own lines are cut at 2047 characters
    LogReading reading;
    std::istringstream stream(bytes);
    for (std::string line; std::getline(stream, line);) {
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        if (line.empty())
            continue;
        line.resize(std::min(line.size(), LONGEST));
        const LogLineKind* const kind = kindOf(line);
        const int number = kind != nullptr ? errorNumber(*kind, line) : 0;
        const std::string error = errorMeaning(number);
        const LogEvent event = kind != nullptr ? kind->event : LogEvent::Other;
        if (event == LogEvent::Success)
            reading.outcome = LogOutcome::Succeeded;
        else if (event == LogEvent::Failure)
            reading.outcome = LogOutcome::Failed;
        else if (reading.outcome == LogOutcome::NoLog)
            reading.outcome = LogOutcome::NoUpdate;
        reading.foreign += kind == nullptr ? 1U : 0U;
        reading.notCopied += event == LogEvent::NotCopied && number != 5 ? 1U : 0U;
        reading.lines.push_back({printable(latin1ToUtf8(line)),
                                 kind == nullptr ? std::string()
                                 : error.empty() ? kind->meaning
                                                 : kind->meaning + (" (" + error + ")")});
        if (reading.lines.size() > SHOWN) {
            reading.lines.pop_front();
            ++reading.earlier;
        }
    }
    return reading;
}
