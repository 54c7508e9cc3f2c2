// The seam between a platform's start-up file and the program.
#pragma once

// The program's entry routine, called once by the start-up file of each platform. Returns
// the exit code of the process: 0 after a quit message, -1 when no window could be made, 1 when no
// GL context could be set up. Several ways out end the process with code 0 instead of returning.
int runUpdater();
