// The exit codes of all commands of updatekey.
#pragma once

enum ExitCode : int {
    ExitFine = 0,
    ExitFindings = 1,    // there is something to report, such as a warning
    ExitFailure = 2,     // wrong usage, or the command failed
    ExitNotWritten = 3,  // the key has errors; no output was created
};
