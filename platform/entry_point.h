// The interface between a platform's start-up file and the program.
#pragma once

// The program's entry routine, called once by the start-up file of each platform. Returns the exit
// code of the process: 0 after a quit message, -1 when the window cannot be created, 1 when the GL
// context cannot be created. Several paths end the process with code 0 instead of returning.
int runUpdater();

// Writes to the log that the display is lost and why, before the platform ends the process.
void logDisplayLost(const char* reason);
