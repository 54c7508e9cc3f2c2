// Starts the program on Windows.

#include <cstdio>

#include "platform/entry_point.h"
#include "platform/win32.h"

#ifdef UNDER_CE
// On CE the entry point with a wide command line is named "WinMain".
#define wWinMain WinMain
#endif

int WINAPI wWinMain(HINSTANCE, HINSTANCE, LPWSTR, int) {
    // Unbuffered, so that all output is visible after a sudden end. The runtime has no line
    // buffering.
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    return runUpdater();
}
