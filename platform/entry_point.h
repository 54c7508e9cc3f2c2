// The seam between a platform's start-up file and the program.
#pragma once

#include "platform/win32.h"

// The program's entry routine, called once by the start-up file of each platform. `module` is the
// handle of the running executable. Returns the exit code of the process: 0 after a quit message,
// -1 when no window could be made, 1 when no GL context could be set up. Several ways out end the
// process with code 0 instead of returning.
int runUpdater(HINSTANCE module);
