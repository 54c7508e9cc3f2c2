#include "tools/host/interrupt.h"

#include "platform/win32.h"

namespace {

// Called in a thread of its own. What it leaves to the system ends the program.
BOOL WINAPI onInterrupt(DWORD) {
    removeLeftovers();
    return FALSE;
}

}  // namespace

void watchForInterrupts() {
    SetConsoleCtrlHandler(onInterrupt, TRUE);
    // A drive without a disk is an error like any other, not a question to the user.
    SetErrorMode(SEM_FAILCRITICALERRORS);
}
