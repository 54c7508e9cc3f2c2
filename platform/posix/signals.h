// Signals of the host, which the instrument does not have: none of them may end the program between
// two calls of an update.
#pragma once

namespace host {

// From now on a write to a reader that has gone, or beyond the host's limit of a file's size, fails
// with its error instead of ending the program.
void ignoreSignalsOfWrites();

// From now on SIGINT (Ctrl-C), SIGTERM and SIGHUP ask the program to close, unless the program was
// started with the signal ignored. SIGQUIT and SIGKILL still end it at once.
void turnSignalsIntoCloseRequests();

// Whether one of them has come since the last look.
bool takeCloseRequest();

// Leaves every signal as a new program expects it: not ignored, not handled, not held back.
void giveSignalsBack();

}  // namespace host
