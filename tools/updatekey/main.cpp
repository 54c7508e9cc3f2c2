// The command line of updatekey.

#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>

#include "tools/updatekey/progress_bar.h"
#include "tools/updatekey/report.h"
#include "update/updater.h"

namespace {

enum ExitCode { FINE = 0, FINDINGS = 1, USAGE = 2 };

struct Arguments {
    bool json = false;
    std::string key;
    std::string out;
    MakeOptions make;
    RehearseOptions rehearse;
    CheckOptions check;
    uint64_t flashSize = 0;
};

int tell(const std::string& text, bool fine) {
    std::fputs(text.c_str(), stdout);
    return fine ? FINE : FINDINGS;
}

int runMake(Arguments& arguments) {
    arguments.make.out = arguments.out;
    arguments.make.check = arguments.check;
    const MakeReport report = makeKey(arguments.make);
    return tell(arguments.json ? makeJson(report, arguments.out) : makeText(report, arguments.out),
                report.check.findings.empty());
}

int runCheck(const Arguments& arguments) {
    const CheckReport report = checkKey(arguments.key, arguments.check);
    return tell(arguments.json ? checkJson(report) : checkText(report), report.findings.empty());
}

int runInfo(const Arguments& arguments) {
    return tell(arguments.json ? infoJson(arguments.key) : infoText(arguments.key), true);
}

int runRehearse(Arguments& arguments) {
    arguments.rehearse.key = arguments.key;
    arguments.rehearse.check = arguments.check;
    const RehearseReport report = rehearse(arguments.rehearse);
    const bool fine = report.check.findings.empty() && report.rehearsed && report.asPredicted &&
                      report.state == UpdateComplete && report.applicationStarted;
    return tell(arguments.json ? rehearseJson(report) : rehearseText(report), fine);
}

void addCheckOptions(CLI::App* command, Arguments& arguments) {
    command
        ->add_option("--flash-size", arguments.flashSize,
                     "Size of the device's flash disk: bytes, or with kb, mb or gb behind it")
        ->transform(CLI::AsSizeValue(false));
    command
        ->add_option("--languages", arguments.check.languages,
                     "Languages that the key is to serve, 0 to 6 (default: all)")
        ->delimiter(',')
        ->check(CLI::Range(0, 6));
}

void addKey(CLI::App* command, Arguments& arguments) {
    command
        ->add_option("KEY", arguments.key,
                     "Folder that stands for the root of the USB storage device")
        ->required()
        ->check(CLI::ExistingDirectory);
}

CLI::App* addMake(CLI::App& app, Arguments& arguments) {
    CLI::App* const command = app.add_subcommand("make", "Make a key");
    command->add_option("--app", arguments.make.application, "Folder with the application's files")
        ->required()
        ->check(CLI::ExistingDirectory);
    command->add_option("--gui", arguments.make.guiData, "Folder with the GUI data")
        ->required()
        ->check(CLI::ExistingDirectory);
    command->add_option("--notes", arguments.make.notes, "Text of the release notes")
        ->required()
        ->check(CLI::ExistingFile);
    command->add_option("--version", arguments.make.version, "Version of the update")->required();
    command->add_option("OUT", arguments.out, "Folder to be made")->required();
    addCheckOptions(command, arguments);
    return command;
}

CLI::App* addRehearse(CLI::App& app, Arguments& arguments) {
    RehearseOptions& options = arguments.rehearse;
    CLI::App* const command =
        app.add_subcommand("rehearse", "Run the real updater with a key on a copy of a device");
    addKey(command, arguments);
    command
        ->add_option("--device", options.device, "Device folder; it is copied and stays as it is")
        ->required()
        ->check(CLI::ExistingDirectory);
    command->add_option("--updater", options.updater, "The updater's program")
        ->check(CLI::ExistingFile);
    command->add_option("--keep", options.keep, "Folder that the updated device is copied to")
        ->check(CLI::NonexistentPath);
    command->add_option("--timeout", options.timeout, "Seconds after which the updater is ended")
        ->check(CLI::Range(1, 86400));
    command->add_flag("--hidden", options.hidden, "Use a screen that nobody sees");
    addCheckOptions(command, arguments);
    return command;
}

int run(int argc, char** argv) {
    Arguments arguments;
    CLI::App app("Makes, judges and rehearses update keys of the Kestrel instrument.", "updatekey");
    app.set_version_flag("--version", std::string("updatekey ") + UPDATEKEY_VERSION);
    app.add_flag("--json", arguments.json, "Write JSON, for scripts");
    app.require_subcommand(1);
    app.fallthrough();
    app.footer(
        "Exit codes: 0 all is fine, 1 something was found, 2 wrong usage or a failure of "
        "this tool.");
    const CLI::App* const make = addMake(app, arguments);
    CLI::App* const check = app.add_subcommand("check", "Say what the device will do with a key");
    addKey(check, arguments);
    addCheckOptions(check, arguments);
    CLI::App* const info = app.add_subcommand("info", "Say what a key is");
    addKey(info, arguments);
    addRehearse(app, arguments);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? FINE : USAGE;
    }
    if (arguments.flashSize > 0)
        arguments.check.flashSize = arguments.flashSize;
    arguments.check.progress = makeProgressBar();
    if (*make)
        return runMake(arguments);
    if (*check)
        return runCheck(arguments);
    return *info ? runInfo(arguments) : runRehearse(arguments);
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return run(argc, argv);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "updatekey: %s\n", error.what());
        return USAGE;
    }
}
