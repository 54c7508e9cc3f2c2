// The program's one text log, and the trace to the debugger.
//
// Every line is flushed at once, so that the file holds all that was written before a crash or a
// power cut. The file is emptied on every open: it tells of the last run only.
#pragma once

#include <cstdarg>
#include <cstdio>
#include <string>

// Longest text that one message or trace carries, its terminator included; the rest is cut.
constexpr std::size_t MESSAGE_BUFFER_SIZE = 2048;

// Sends the formatted text and a line end to the debugger output. Writes nothing to the log.
[[gnu::format(printf, 1, 2)]] void debugPrint(const char* format, ...);

class Logger {
  public:
    // The process-wide log, made on first use; not open until setPath, open or a first message.
    static Logger& instance();

    Logger(const Logger&) = delete;
    Logger& operator=(const Logger&) = delete;
    virtual ~Logger();

    // Closes the file if it is open, and opens `path` instead.
    void setPath(const std::string& path);

    // Empties the file and writes the line "Opening log at " with the local time. A file that
    // cannot be opened is reported to the debugger only; the next message tries again, and is lost
    // if that fails too.
    void open();

    // An error: the message behind a mark, between two empty lines, and its echo to the debugger.
    [[gnu::format(printf, 2, 3)]] void error(const char* format, ...);

    // A warning: one marked line, and its echo to the debugger.
    [[gnu::format(printf, 2, 3)]] void warning(const char* format, ...);

    // The message as it stands, without a line end and without an echo.
    [[gnu::format(printf, 2, 3)]] void write(const char* format, ...);

    // The message and a line end, without an echo.
    [[gnu::format(printf, 2, 3)]] void writeLine(const char* format, ...);

  private:
    Logger() = default;

    std::string format(const char* format, std::va_list arguments);
    void put(const std::string& text);
    void close();

    std::string path_ = "log.txt";
    std::FILE* file_ = nullptr;
};
