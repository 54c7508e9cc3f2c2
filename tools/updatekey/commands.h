// The commands of updatekey and their options. The help and the manual pages are generated from
// this description.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "tools/host/exit_code.h"
#include "tools/updatekey/check/check.h"
#include "tools/updatekey/make/disk_image.h"
#include "tools/updatekey/make/make.h"
#include "tools/updatekey/rehearse/rehearse.h"
#include "tools/updatekey/report/output.h"
#include "tools/updatekey/write/sticks.h"

// The values of the command line.
struct Arguments {
    OutputOptions output;
    std::string key;    // a folder or a disk image; for diagnose, the device
    std::string other;  // what `key` is compared with
    std::vector<std::string> sticks;
    MakeOptions make;
    ImageOptions image;
    WriteOptions write;
    RehearseOptions rehearse;
    CheckOptions check;
};

// Adds all commands to `app`. Parsed values are stored in `arguments`, which must outlive `app`.
void describeCommands(CLI::App& app, Arguments& arguments);

// Runs the parsed command. Returns an ExitCode. Throws std::exception on failure.
int runCommand(const CLI::App& app, Arguments& arguments);
