// Start of the program on Windows.

#include <cstdio>

#include "platform/entry_point.h"
#include "platform/win32.h"

#ifdef UNDER_CE
// The entry point of CE takes a wide command line under the plain name.
#define wWinMain WinMain
#endif

int WINAPI wWinMain(HINSTANCE, HINSTANCE, LPWSTR, int) {
    // At once, so that what was said before a sudden end is read; the runtime knows no buffering by
    // lines.
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    return runUpdater();
}
