// The commands of updatekey: what each takes and does. The help, the completion of the shells and
// the manual pages are made from this one description.
#pragma once

#include <CLI/CLI.hpp>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "tools/updatekey/check.h"
#include "tools/updatekey/disk_image.h"
#include "tools/updatekey/make.h"
#include "tools/updatekey/rehearse.h"
#include "tools/updatekey/sticks.h"

enum ExitCode {
    FINE = 0,
    FINDINGS = 1,     // something was found; what was to be made is made
    FAILURE = 2,      // wrong usage, or this tool could not do its work
    NOT_WRITTEN = 3,  // errors were found, and so nothing was made
};

// What the command line says.
struct Arguments {
    bool json = false;
    bool quiet = false;
    std::string key;    // a folder, or a disk image
    std::string other;  // the second folder of a comparison
    std::string out;
    std::string shell;
    std::vector<std::string> sticks;
    MakeOptions make;
    ImageOptions image;
    bool noPartitionTable = false;
    WriteOptions write;
    RehearseOptions rehearse;
    CheckOptions check;
};

// Describes all commands to `app`; what is parsed goes to `arguments`, which must live as long.
void describeCommands(CLI::App& app, Arguments& arguments);

// Runs the command that was parsed. Returns an ExitCode. Throws std::exception when the work could
// not be done.
int runCommand(const CLI::App& app, Arguments& arguments);
