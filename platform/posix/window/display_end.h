// What ends the program when its display is gone or no longer answers. The instrument's display is
// always there.
#pragma once

#include <csignal>

namespace host {

// Whether the program, since its last Win32 call, can wait for nothing but the display. It is never
// set between two calls of a step of the update.
extern volatile std::sig_atomic_t waitsForDisplay;

// Ends the process with exit code 4, after a line on standard error and in the log.
[[noreturn]] void endWithoutDisplay(const char* reason);

// Ends the process in the same way, without a line in the log, when it waits for the display for a
// few seconds from now on. A signal handler calls this.
void endWhenDisplayHangs();

// Called with the reason by endWithoutDisplay; writes it to the log.
extern void (*onDisplayLost)(const char* reason);

}  // namespace host
