// The standard streams and the command line. All narrow text of the tools is UTF-8 and is written
// as it is; the runtime's own conversion, which std::filesystem uses, knows only the code page.

#include "tools/host/terminal.h"

#include <fcntl.h>
#include <io.h>

#include <cerrno>
#include <cstdio>
#include <cwchar>

#include "platform/win32.h"
// Uses the types of the header above.
#include <shellapi.h>

#include "platform/utf.h"

namespace {

// Whether the stream is a console. It then shows colours and moves the cursor.
bool isConsole(DWORD stream) {
    constexpr DWORD COLOURS = 0x4;  // ENABLE_VIRTUAL_TERMINAL_PROCESSING
    const HANDLE handle = GetStdHandle(stream);
    DWORD mode = 0;
    return GetConsoleMode(handle, &mode) != FALSE &&
           SetConsoleMode(handle, mode | COLOURS) != FALSE;
}

// The unit that a conversion must still give, which is never 0.
unsigned& pending(std::mbstate_t* state) {
    static thread_local std::mbstate_t own{};
    return *reinterpret_cast<unsigned*>(state != nullptr ? state : &own);
}

}  // namespace

bool outputIsTerminal() {
    return isConsole(STD_OUTPUT_HANDLE);
}

bool errorsAreTerminal() {
    return isConsole(STD_ERROR_HANDLE);
}

std::vector<std::string> commandLine(int, char**) {
    SetConsoleOutputCP(CP_UTF8);
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
    int count = 0;
    LPWSTR* const words = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> arguments;
    for (int i = 1; i < count; ++i) {
        std::wstring word = words[i];
        // A drive alone is its root, not the current folder on it.
        if (word.size() == 2 && word[1] == L':')
            word += L'\\';
        arguments.push_back(host::toUtf8(std::u16string(word.begin(), word.end())));
    }
    LocalFree(words);
    return arguments;
}

// Replaces the runtime's function. A character beyond U+FFFF takes its first three bytes for its
// first unit, and its last byte for the second one.
extern "C" std::size_t mbrtowc(wchar_t* wide, const char* bytes, std::size_t size,
                               std::mbstate_t* state) {
    unsigned& second = pending(state);
    std::size_t length = 1;
    wchar_t unit = static_cast<wchar_t>(second);
    if (second == 0) {
        const auto lead = static_cast<unsigned char>(*bytes);
        length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
        if (size < length)
            return static_cast<std::size_t>(-2);
        const std::u16string units = host::toUtf16({bytes, length});
        if (units.size() > 2 || (units.size() == 2 && length != 4)) {
            errno = EILSEQ;
            return static_cast<std::size_t>(-1);
        }
        unit = units[0];
        second = units.size() == 2 ? units[1] : 0U;
        length -= second != 0 ? 1 : 0;
    } else {
        second = 0;
    }
    if (wide != nullptr)
        *wide = unit;
    return unit == 0 ? 0 : length;
}

extern "C" std::size_t wcrtomb(char* bytes, wchar_t unit, std::mbstate_t* state) {
    unsigned& first = pending(state);
    std::u16string units;
    if (first != 0)
        units += static_cast<char16_t>(first);
    units += unit;
    first = first == 0 && unit >= 0xD800 && unit <= 0xDBFF ? unit : 0U;
    const std::string text = first != 0 ? std::string() : host::toUtf8(units);
    return text.copy(bytes, text.size());
}
