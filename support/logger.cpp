#include "support/logger.h"

#include "platform/win32.h"
#include "support/text.h"
#include "support/time_util.h"

namespace {

std::string formatMessage(const char* format, std::va_list arguments) {
    char buffer[MESSAGE_BUFFER_SIZE] = "";
    std::vsnprintf(buffer, sizeof buffer, format, arguments);
    return buffer;
}

void sendToDebugger(const std::string& text) {
    OutputDebugStringW((widen(text) + TEXT("\n")).c_str());
}

// The logged message is itself used as the format of the trace: "%%" shows as "%", also when it
// comes from an argument. Kept. All other conversions are shown unchanged: no arguments are passed
// for them, so applying them would read arbitrary memory.
void echo(const std::string& message) {
    std::string text;
    for (std::size_t i = 0; i < message.size(); ++i) {
        text += message[i];
        if (message.compare(i, 2, "%%") == 0)
            ++i;
    }
    sendToDebugger(text);
}

}  // namespace

void debugPrint(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    const std::string text = formatMessage(format, arguments);
    va_end(arguments);
    sendToDebugger(text);
}

Logger& Logger::instance() {
    static Logger logger;
    return logger;
}

void Logger::setPath(const std::string& path) {
    path_ = path;
    open();
}

void Logger::open() {
    file_.reset();
    file_ = openFile(path_, TEXT("w"));

    SYSTEMTIME now{};
    GetLocalTime(&now);
    const std::string time = formatTime(now);
    if (file_ != nullptr)
        put("Opening log at " + time + "\n");
    else
        debugPrint("Error opening log stream...");
}

void Logger::error(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    const std::string message = this->format(format, arguments);
    va_end(arguments);
    put("\n    *** ERROR *** " + message + "\n\n");
    echo(message);
}

void Logger::warning(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    const std::string message = this->format(format, arguments);
    va_end(arguments);
    put("  ** Warning ** " + message + "\n");
    echo(message);
}

void Logger::write(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    const std::string message = this->format(format, arguments);
    va_end(arguments);
    put(message);
}

void Logger::writeLine(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    const std::string message = this->format(format, arguments);
    va_end(arguments);
    put(message + "\n");
}

std::string Logger::format(const char* format, std::va_list arguments) {
    if (file_ == nullptr)
        open();
    return formatMessage(format, arguments);
}

void Logger::put(const std::string& text) {
    if (file_ == nullptr)
        return;
    std::fwrite(text.data(), 1, text.size(), file_.get());
    std::fflush(file_.get());
}
