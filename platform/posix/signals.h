// Handling of the host's signals. The instrument has none, and none may end the program between two
// calls of an update.
#pragma once

namespace host {

// Makes a write to a closed pipe, or beyond the file size limit, fail with an error instead of
// ending the program.
void ignoreSignalsOfWrites();

// Makes SIGINT (Ctrl-C), SIGTERM and SIGHUP ask the program to close, unless they were ignored when
// it was started. A program that then waits for a display that does not answer is ended after a few
// seconds. SIGQUIT and SIGKILL still end it at once.
void turnSignalsIntoCloseRequests();

// Returns whether one of these signals has arrived since the last call.
bool takeCloseRequest();

}  // namespace host
