#include "tools/diagnosis/log_lines.h"

#include <cstdlib>
#include <map>
#include <sstream>

#include "platform/posix/utf.h"
#include "support/text.h"
#include "tools/host/printable.h"

const std::vector<LogLineKind> LOG_LINE_KINDS = {
    {"Opening log at %", "the updater was started at this local time"},
    {"  ** Warning ** Update succeeded at %", "the update succeeded; logged as a warning"},
    {"    *** ERROR *** Update failed.", "the update failed; the lines above give the reason"},
    {"    *** ERROR *** Error % ::MoveFile: % -> % :", "a folder could not be moved"},
    {"    *** ERROR *** Error % deleting file: %", "a file of the old backup could not be deleted"},
    {"    *** ERROR *** Error % ::RemoveDirectory(%)",
     "a folder of the old backup, or the staging folder, could not be removed"},
    {"    *** ERROR *** Error % ::SetFileAttributes",
     "a file was not copied (error 2), or stayed read-only"},
    {"    *** ERROR *** File % not found.", "a picture or font page of the GUI data is missing"},
    {"    *** ERROR *** File % is too short.",
     "a picture or font page of the GUI data is incomplete"},
    {"    *** ERROR *** File % is too large.",
     "there was not enough memory for a picture or font page"},
    {"    *** ERROR *** Font file % not found.", "a font of the GUI data is missing"},
    {"    *** ERROR *** Font file % is too large.", "a font of the GUI data is damaged"},
    {"    *** ERROR *** Font % asks for too much memory.",
     "a font of the GUI data is damaged, or there was not enough memory for it"},
    {"    *** ERROR *** Language % not recognized in StringTable...",
     "the updater has no language with this number"},
    {"  ** Warning ** Error getting registry key [%].",
     "the configuration lacks this value; the updater used its default"},
    {"  ** Warning ** Error closing registry key [%].",
     "the registry reported an error after reading this value"},
    {"  ** Warning ** Unrecognized Char: %", "a text contains a character that its font lacks"},
};

namespace {

// The first part of the pattern must begin the text and the last part must end it; the others must
// occur in between.
bool matches(const std::string& text, const std::string& pattern) {
    std::size_t at = 0;
    std::size_t start = 0;
    for (std::size_t wildcard = 0; (wildcard = pattern.find('%', start)) != std::string::npos;
         start = wildcard + 1) {
        const std::string piece = pattern.substr(start, wildcard - start);
        const std::size_t found = text.find(piece, at);
        if (found == std::string::npos || (start == 0 && found != 0))
            return false;
        at = found + piece.size();
    }
    const std::string last = pattern.substr(start);
    return text.size() >= at + last.size() && (start > 0 || text == pattern) &&
           text.compare(text.size() - last.size(), last.size(), last) == 0;
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

std::string meaningOf(const std::string& line) {
    for (const LogLineKind& kind : LOG_LINE_KINDS) {
        if (!matches(line, kind.pattern))
            continue;
        const std::size_t number = line.find("Error ");
        const bool numbered = std::string(kind.pattern).find("Error % ") != std::string::npos;
        const std::string error = numbered ? errorMeaning(static_cast<int>(std::strtol(
                                                 line.c_str() + number + 6, nullptr, 10)))
                                           : std::string();
        return kind.meaning + (error.empty() ? error : " (" + error + ")");
    }
    return {};
}

}  // namespace

LogReading readLog(const std::string& bytes) {
    LogReading reading;
    std::istringstream stream(bytes);
    for (std::string line; std::getline(stream, line);) {
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        if (line.empty())
            continue;
        reading.outcome =
            reading.outcome == LogOutcome::NoLog ? LogOutcome::NoUpdate : reading.outcome;
        if (matches(line, "  ** Warning ** Update succeeded at %"))
            reading.outcome = LogOutcome::Succeeded;
        if (line == "    *** ERROR *** Update failed.")
            reading.outcome = LogOutcome::Failed;
        reading.lines.push_back({printable(host::toUtf8(widen(line))), meaningOf(line)});
    }
    return reading;
}
