#include "tools/updatekey/commands.h"

#include <cstdio>
#include <stdexcept>

#include "tools/updatekey/completion.h"
#include "tools/updatekey/key_source.h"
#include "tools/updatekey/output.h"
#include "tools/updatekey/progress_bar.h"
#include "tools/updatekey/report.h"
#include "tools/updatekey/values.h"
#include "update/updater.h"

namespace {

constexpr const char* KEY_TEXT =
    "Folder that stands for the root of the USB storage device, or a disk image";

int codeOf(const CheckReport& report, bool made = true) {
    return !made ? ExitNotWritten : report.findings.empty() ? ExitFine : ExitFindings;
}

int runMake(Arguments& arguments) {
    arguments.make.out = arguments.out;
    arguments.make.check = arguments.check;
    const MakeReport report = makeKey(arguments.make);
    show(arguments, makeText(report, arguments.out), findingsText(report.check.findings),
         makeJson(report, arguments.out));
    return codeOf(report.check, report.written);
}

int runCheck(Arguments& arguments) {
    const KeySource key(arguments.key);
    const CheckReport report = checkKey(key.folder(), arguments.check);
    show(arguments, checkText(report), findingsText(report.findings), checkJson(report));
    return codeOf(report);
}

int runInfo(Arguments& arguments) {
    const KeySource key(arguments.key);
    const KeyInfo info = describeKey(key.folder());
    show(arguments, infoText(info), "", infoJson(info));
    return ExitFine;
}

int runImage(Arguments& arguments) {
    arguments.image.key = arguments.key;
    arguments.image.out = arguments.out;
    arguments.image.partitionTable = !arguments.noPartitionTable;
    arguments.image.check = arguments.check;
    const ImageReport report = makeImage(arguments.image);
    show(arguments, imageText(report, arguments.out), findingsText(report.check.findings),
         imageJson(report, arguments.out));
    return codeOf(report.check, report.written);
}

int runWrite(Arguments& arguments) {
    const KeySource key(arguments.key);
    WriteOptions& options = arguments.write;
    options.key = key.folder();
    options.sticks.assign(arguments.sticks.begin(), arguments.sticks.end());
    options.check = arguments.check;
    if (!arguments.quiet)
        options.progress = makeStickBars(arguments.sticks);
    const WriteReport report = writeSticks(options);
    show(arguments, writeText(report), stickProblems(report), writeJson(report));
    if (report.sticks.empty())
        return ExitNotWritten;
    return report.allGood() ? codeOf(report.check) : ExitFindings;
}

int runDiff(Arguments& arguments) {
    const KeySource key(arguments.key);
    const KeySource other(arguments.other);
    const Difference difference = compareKeys(key.folder(), other.folder());
    show(arguments, differenceText(difference), "", differenceJson(difference));
    return difference.empty() ? ExitFine : ExitFindings;
}

int runDiagnose(Arguments& arguments) {
    std::optional<KeySource> key;
    if (!arguments.other.empty())
        key.emplace(arguments.other);
    const Diagnosis diagnosis =
        diagnose(arguments.key, key ? std::optional(key->folder()) : std::nullopt);
    show(arguments, diagnosisText(diagnosis), adviceText(diagnosis), diagnosisJson(diagnosis));
    return diagnosis.sound() ? ExitFine : ExitFindings;
}

int runRehearse(Arguments& arguments) {
    const KeySource key(arguments.key);
    arguments.rehearse.key = key.folder();
    arguments.rehearse.check = arguments.check;
    if (!arguments.quiet)
        arguments.rehearse.waited = makeClock(arguments.rehearse.timeout);
    const RehearseReport report = rehearse(arguments.rehearse);
    show(arguments, rehearseText(report), findingsText(report.check.findings),
         rehearseJson(report));
    const bool fine = report.check.findings.empty() && report.rehearsed && report.asPredicted &&
                      report.state == UpdateComplete &&
                      (report.applicationStarted || !report.startsHere);
    return fine ? ExitFine : ExitFindings;
}

// Adds an option whose text is converted by `parse`. An exception of `parse` is a usage error.
template <class Parse>
CLI::Option* addParsed(CLI::App* command, const std::string& name, const std::string& type,
                       const std::string& description, Parse parse) {
    return command
        ->add_option_function<std::string>(
            name,
            [name, parse](const std::string& text) {
                try {
                    parse(text);
                } catch (const std::exception& error) {
                    throw CLI::ValidationError(name, error.what());
                }
            },
            description)
        ->type_name(type);
}

// Adds an option whose value is checked, and shows a simple type name in the help.
template <class Value>
CLI::Option* addChecked(CLI::App* command, const std::string& name, Value& value,
                        const std::string& text, CLI::Validator check, const char* kind) {
    return command->add_option(name, value, text)->check(check.description(""))->type_name(kind);
}

template <class Value>
CLI::Option* addFolder(CLI::App* command, const std::string& name, Value& value,
                       const std::string& text) {
    return addChecked(command, name, value, text, CLI::ExistingDirectory, "DIR");
}

void addKey(CLI::App* command, Arguments& arguments) {
    addChecked(command, "KEY", arguments.key, KEY_TEXT, CLI::ExistingPath, "PATH")->required();
}

void addCheckOptions(CLI::App* command, Arguments& arguments) {
    CheckOptions& check = arguments.check;
    addParsed(command, "--flash-size", "SIZE",
              "Size of the device's flash disk: bytes, or with kb, mb or gb behind it",
              [&](const std::string& text) { check.flashSize = parseSize(text); });
    addParsed(command, "--languages", "LIST",
              "Languages that the key is to serve, by number or letters: 0,fr,jp (default: all)",
              [&](const std::string& text) { check.languages = parseLanguages(text); });
    addChecked(command, "--machine", check.machine,
               "Machine that the application is built for: arm, x86, x64, or any for a simulated "
               "instrument (default: arm)",
               CLI::IsMember({"arm", "x86", "x64", "any"}), "NAME");
    command
        ->add_option("--accept", check.accepted,
                     "Findings that are known and wanted, by their code: notes-utf8,litter")
        ->delimiter(',')
        ->type_name("CODES");
}

void describeMake(CLI::App* command, Arguments& arguments) {
    MakeOptions& make = arguments.make;
    addFolder(command, "--app", make.application, "Folder with the application's files")
        ->required();
    addFolder(command, "--gui", make.guiData, "Folder with the GUI data")->required();
    addChecked(command, "--notes", make.notes, "Text of the release notes", CLI::ExistingFile,
               "FILE")
        ->required();
    command->add_option("--version", make.version, "Version of the update")->required();
    command->add_option("OUT", arguments.out, "Folder to be made")->required();
    addCheckOptions(command, arguments);
}

void describeImage(CLI::App* command, Arguments& arguments) {
    addKey(command, arguments);
    command->add_option("FILE", arguments.out, "Image to be made")->required();
    addParsed(command, "--size", "SIZE",
              "Size of the image (default: the least that holds the key)",
              [&](const std::string& text) { arguments.image.size = parseSize(text); });
    command->add_flag("--no-partition-table", arguments.noPartitionTable,
                      "Begin with the file system at once, as some imagers want it");
    addCheckOptions(command, arguments);
}

void describeWrite(CLI::App* command, Arguments& arguments) {
    addKey(command, arguments);
    // A stick that does not exist is reported like any other faulty stick.
    command->add_option("FOLDER", arguments.sticks, "Folders on which the sticks are mounted")
        ->required()
        ->type_name("DIR");
    command->add_flag("--replace", arguments.write.replace,
                      "Remove the update that is on a stick, its folder VELD, and nothing else");
    addCheckOptions(command, arguments);
}

void describeRehearse(CLI::App* command, Arguments& arguments) {
    RehearseOptions& options = arguments.rehearse;
    addKey(command, arguments);
    addFolder(command, "--device", options.device, "Device folder; it is copied and stays as it is")
        ->required();
    addChecked(command, "--updater", options.updater, "The updater's program", CLI::ExistingFile,
               "FILE");
    addChecked(command, "--keep", options.keep, "Folder that the updated device is copied to",
               CLI::NonexistentPath, "PATH");
    addChecked(command, "--timeout", options.timeout,
               "Seconds after which the updater is ended, 1 to 86400 (default: " +
                   std::to_string(options.timeout) + ")",
               CLI::Range(1, 86400), "SECONDS");
    command->add_flag("--hidden", options.hidden, "Use a virtual screen");
    addCheckOptions(command, arguments);
}

void describeDiff(CLI::App* command, Arguments& arguments) {
    addKey(command, arguments);
    addChecked(command, "OTHER", arguments.other, "Another key, or a device folder",
               CLI::ExistingPath, "PATH")
        ->required();
}

void describeDiagnose(CLI::App* command, Arguments& arguments) {
    addFolder(command, "DEVICE", arguments.key, "Device folder, or a copy of its flash disk")
        ->required();
    addChecked(command, "--manifest", arguments.other,
               "Key whose files are compared with those that are installed", CLI::ExistingPath,
               "PATH");
}

struct Command {
    const char* name;
    const char* description;
    void (*describe)(CLI::App* command, Arguments& arguments);
    int (*run)(Arguments& arguments);
};

void describeCheck(CLI::App* command, Arguments& arguments) {
    addKey(command, arguments);
    addCheckOptions(command, arguments);
}

constexpr Command COMMANDS[] = {
    {"make", "Make a key", describeMake, runMake},
    {"check", "Say what the device will do with a key", describeCheck, runCheck},
    {"info", "Say what a key is", addKey, runInfo},
    {"image", "Make a disk image of a key", describeImage, runImage},
    {"write", "Write a key onto sticks and read them back", describeWrite, runWrite},
    {"diff", "Say what changes between a key and another, or a device", describeDiff, runDiff},
    {"rehearse", "Run the real updater with a key on a copy of a device", describeRehearse,
     runRehearse},
    {"diagnose", "Say what is the matter with an instrument that came back, and what cures it",
     describeDiagnose, runDiagnose},
};

}  // namespace

void describeCommands(CLI::App& app, Arguments& arguments) {
    app.set_version_flag("--version", std::string("updatekey ") + UPDATEKEY_VERSION);
    app.set_help_all_flag("--help-all", "Print the help of all commands and exit");
    app.add_flag("--json", arguments.json, "Write JSON, for scripts");
    app.add_flag("--quiet", arguments.quiet, "Write only what needs attention");
    app.add_option("--completion", arguments.shell,
                   "Write the completion script for bash, zsh or fish, and end")
        ->type_name("SHELL")
        ->check(CLI::IsMember({"bash", "zsh", "fish"}));
    app.require_subcommand(0, 1);
    app.fallthrough();
    app.footer(
        "Exit codes: 0 all is fine; 1 something was found; 2 wrong usage, or the work could not "
        "be done; 3 nothing was written, because of errors in the key.");
    for (const Command& command : COMMANDS)
        command.describe(app.add_subcommand(command.name, command.description), arguments);
}

int runCommand(const CLI::App& app, Arguments& arguments) {
    if (!arguments.shell.empty()) {
        writeOut(completionScript(app, arguments.shell));
        return ExitFine;
    }
    if (!arguments.quiet)
        arguments.check.progress = makeProgressBar();
    for (const Command& command : COMMANDS)
        if (app.got_subcommand(command.name))
            return command.run(arguments);
    throw std::runtime_error(
        "name a command: make, check, info, image, write, diff, rehearse or "
        "diagnose; updatekey --help tells about them");
}
