// The program's text log, and traces to the debugger. The instrument's programs share the logger;
// the updater itself writes no lines without a mark (write, writeLine).
//
// Every line is flushed at once, so that the file is complete up to a crash or a power cut. The
// file is emptied whenever it is opened: it covers the last run only.
#pragma once

#include <cstdarg>
#include <string>

#include "support/open_file.h"

// The longest message or trace, its terminator included; longer ones are cut.
constexpr std::size_t MESSAGE_BUFFER_SIZE = 2048;

// Sends the formatted text and a line end to the debugger output. Writes nothing to the log.
[[gnu::format(printf, 1, 2)]] void debugPrint(const char* format, ...);

class Logger {
  public:
    // The process-wide log, created on first use. It is closed until setPath, open or the first
    // message.
    static Logger& instance();

    Logger(const Logger&) = delete;
    Logger& operator=(const Logger&) = delete;
    virtual ~Logger() = default;

    // Closes the file if it is open, and opens `path` instead.
    void setPath(const std::string& path);

    // Empties the file and writes the line "Opening log at " with the local time. When the file
    // cannot be opened, only a trace reports it; the next message tries again, and is lost when
    // that fails too.
    void open();

    // Writes the message as an error, marked and between two empty lines, and traces it.
    [[gnu::format(printf, 2, 3)]] void error(const char* format, ...);

    // Writes the message as a warning, one marked line, and traces it.
    [[gnu::format(printf, 2, 3)]] void warning(const char* format, ...);

    // Writes the message without a line end and without a trace.
    [[gnu::format(printf, 2, 3)]] void write(const char* format, ...);

    // Writes the message and a line end, without a trace.
    [[gnu::format(printf, 2, 3)]] void writeLine(const char* format, ...);

  private:
    Logger() = default;

    std::string format(const char* format, std::va_list arguments);
    void put(const std::string& text);

    std::string path_ = "log.txt";
    FilePointer file_;
};
