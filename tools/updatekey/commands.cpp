#include "tools/updatekey/commands.h"

#include <algorithm>
#include <cstdio>
#include <stdexcept>

#include "tools/updatekey/check/check_installation.h"
#include "tools/updatekey/key_source.h"
#include "tools/updatekey/options.h"
#include "tools/updatekey/report/progress_bar.h"
#include "tools/updatekey/report/report.h"
#include "tools/updatekey/values.h"
#include "tools/updatekey/write/targets.h"
#include "update/updater.h"

namespace fs = std::filesystem;

namespace {

constexpr const char* KEY_TEXT =
    "Update key: the folder with the content of the USB stick, or a disk image of it";

int codeOf(const CheckReport& report, bool made = true) {
    return !made ? ExitNotWritten : report.findings.empty() ? ExitFine : ExitFindings;
}

int runMake(Arguments& arguments) {
    const fs::path& out = arguments.make.out;
    const MakeReport report = makeKey(arguments.make, arguments.check);
    show(arguments.output, makeText(report, out), findingsText(report.check.findings),
         makeJson(report, out));
    return codeOf(report.check, report.written);
}

int runCheck(Arguments& arguments) {
    const KeySource key(arguments.key);
    const CheckReport report = checkKey(key.folder(), arguments.check);
    show(arguments.output, checkText(report), findingsText(report.findings), checkJson(report));
    return codeOf(report);
}

int runInfo(Arguments& arguments) {
    const KeySource key(arguments.key);
    const KeyInfo info = describeKey(key.folder());
    show(arguments.output, infoText(info), "", infoJson(info));
    return ExitFine;
}

int runImage(Arguments& arguments) {
    const fs::path& out = arguments.image.out;
    const ImageReport report = makeImage(arguments.image, arguments.check);
    show(arguments.output, imageText(report, out), findingsText(report.check.findings),
         imageJson(report, out));
    return codeOf(report.check, report.written);
}

int runWrite(Arguments& arguments) {
    const KeySource key(arguments.key);
    WriteOptions& options = arguments.write;
    options.key = key.folder();
    options.source = arguments.key;
    options.sticks.assign(arguments.sticks.begin(), arguments.sticks.end());
    if (!arguments.output.quiet)
        options.progress = makeStickBars(arguments.sticks);
    const WriteReport report = writeSticks(options, arguments.check);
    show(arguments.output, writeText(report), stickProblems(report), writeJson(report));
    if (report.sticks.empty())
        return ExitNotWritten;
    return report.allGood() ? codeOf(report.check) : ExitFindings;
}

int runSticks(Arguments& arguments) {
    const std::vector<Stick> sticks = listSticks();
    show(arguments.output, sticksText(sticks), sticksText(sticks), sticksJson(sticks));
    return ExitFine;
}

int runDiff(Arguments& arguments) {
    const KeySource key(arguments.key);
    const KeySource other(arguments.other);
    const Difference difference = compareKeys(key.folder(), other.folder());
    show(arguments.output, differenceText(difference), "", differenceJson(difference));
    return difference.empty() ? ExitFine : ExitFindings;
}

// The size of the flash disk is known when the technician gives an image, or a file system of its
// own and not a copy in a folder.
std::optional<fs::space_info> flashDisk(const fs::path& given, const fs::path& folder) {
    if (!fs::is_directory(given)) {
        uint64_t used = 0;
        for (const TreeEntry& entry : readTree(folder))
            used += sizeOnFlash(entry.size);
        const uint64_t size = fs::file_size(given);
        return fs::space_info{size, size - std::min(size, used), size - std::min(size, used)};
    }
    return isMountPoint(folder) ? std::optional(fs::space(folder)) : std::nullopt;
}

int runDiagnose(Arguments& arguments) {
    const KeySource device(arguments.key);
    std::optional<KeySource> key;
    DiagnoseOptions options;
    if (!arguments.other.empty())
        options.key = key.emplace(arguments.other).folder();
    options.disk = flashDisk(arguments.key, device.folder());
    options.check = [&](const fs::path& makerFolder) {
        return checkInstallation(device.folder(), makerFolder, arguments.check);
    };
    const Diagnosis diagnosis = diagnose(device.folder(), options);
    show(arguments.output, diagnosisText(diagnosis),
         findingsText(diagnosis.findings) + adviceText(diagnosis), diagnosisJson(diagnosis));
    return diagnosis.sound() ? ExitFine : ExitFindings;
}

int runRehearse(Arguments& arguments) {
    const KeySource key(arguments.key);
    arguments.rehearse.key = key.folder();
    if (!arguments.output.quiet)
        arguments.rehearse.waited = makeClock(arguments.rehearse.timeout);
    const RehearseReport report = rehearse(arguments.rehearse, arguments.check);
    show(arguments.output, rehearseText(report), findingsText(report.check.findings),
         rehearseJson(report));
    const bool fine = report.check.findings.empty() && report.rehearsed && report.asPredicted &&
                      report.state == UpdateComplete &&
                      (report.applicationStarted || !report.startsHere);
    return fine ? ExitFine : ExitFindings;
}

void addKey(CLI::App* command, Arguments& arguments) {
    addChecked(command, "KEY", arguments.key, KEY_TEXT, CLI::ExistingPath, "PATH")->required();
}

// The options that tell what an instrument needs.
void addInstrumentOptions(CLI::App* command, CheckOptions& check) {
    addParsed(command, "--languages", "LIST",
              "Languages that the key must support, by number or suffix, such as 0,fr,jp "
              "(default: all)",
              [&](const std::string& text) { check.languages = parseLanguages(text); });
    addChecked(
        command, "--machine", check.machine,
        "Processor that the application must be built for: arm, x86 or x64; any accepts every "
        "file, for a simulated instrument (default: arm)",
        CLI::IsMember({"arm", "x86", "x64", "any"}), "NAME");
}

void addCheckOptions(CLI::App* command, Arguments& arguments) {
    CheckOptions& check = arguments.check;
    addParsed(
        command, "--flash-size", "SIZE",
        "Size of the device's flash disk, in bytes or with the unit kb, mb or gb, such as 64mb "
        "(default: the space is not checked)",
        [&](const std::string& text) { check.flashSize = parseSize(text); });
    addInstrumentOptions(command, check);
    addParsed(command, "--accept", "CODES",
              "Findings to ignore, by their codes, such as notes-utf8,litter (default: none)",
              [&](const std::string& text) { check.accepted = parseFindings(text); });
}

void describeMake(CLI::App* command, Arguments& arguments) {
    MakeOptions& make = arguments.make;
    addFolder(command, "--app", make.application,
              "Folder with the application's files, which become KSTRL/")
        ->required();
    addFolder(command, "--gui", make.guiData, "Folder with the GUI data, which become ORBUI/data/")
        ->required();
    addChecked(command, "--notes", make.notes, "Release notes, a text file in UTF-8 or Latin-1",
               CLI::ExistingFile, "FILE")
        ->required();
    command
        ->add_option("--version", make.version,
                     "Version of the update, one line of text, such as 2.14.3")
        ->required();
    command->add_option("OUT", make.out, "Folder to make; it must be new or empty")->required();
    addCheckOptions(command, arguments);
}

void describeImage(CLI::App* command, Arguments& arguments) {
    addChecked(command, "KEY", arguments.image.key, KEY_TEXT, CLI::ExistingPath, "PATH")
        ->required();
    command->add_option("FILE", arguments.image.out, "Image file to make; it must not exist")
        ->required();
    addParsed(
        command, "--size", "SIZE",
        "Size of the image, in bytes or with the unit kb, mb or gb (default: the smallest that "
        "holds the key)",
        [&](const std::string& text) { arguments.image.size = parseSize(text); });
    command->add_flag("--no-partition-table", arguments.image.noPartitionTable,
                      "Make an image of the file system alone, as some imagers require");
    addCheckOptions(command, arguments);
}

void describeWrite(CLI::App* command, Arguments& arguments) {
    addKey(command, arguments);
    // A stick that does not exist is reported like any other faulty stick.
    command->add_option("FOLDER", arguments.sticks, "Folders at which the sticks are mounted")
        ->required()
        ->type_name("DIR");
    command->add_flag("--replace", arguments.write.replace,
                      "Replace an earlier update; other files in its folder VELD stay (default: "
                      "such a stick is refused)");
    command->add_flag("--eject", arguments.write.eject,
                      "Unmount each good stick and switch it off, so that it can be pulled out");
    command->add_flag("--not-a-stick", arguments.write.anyFolder,
                      "Also write to what is not on a removable or USB disk with FAT32, such as a "
                      "mounted image or a folder for a test");
    addCheckOptions(command, arguments);
}

void describeRehearse(CLI::App* command, Arguments& arguments) {
    RehearseOptions& options = arguments.rehearse;
    addKey(command, arguments);
    addFolder(command, "--device", options.device, "Device folder; only a copy of it is changed")
        ->required();
    addChecked(command, "--updater", options.updater,
               "Program of the updater (default: the one installed with updatekey)",
               CLI::ExistingFile, "FILE");
    addChecked(command, "--keep", options.keep,
               "New folder for the updated device (default: it is deleted)", CLI::NonexistentPath,
               "PATH");
    addChecked(command, "--timeout", options.timeout,
               "Seconds after which the updater is ended, 1 to 86400 (default: " +
                   std::to_string(options.timeout) + ")",
               CLI::Range(1, 86400), "SECONDS");
    command->add_flag("--hidden", options.hidden,
                      "Use a virtual screen even if there is a display");
    addCheckOptions(command, arguments);
}

void describeDiff(CLI::App* command, Arguments& arguments) {
    addKey(command, arguments);
    addChecked(command, "OTHER", arguments.other,
               "Another key, a disk image of one, or a device folder", CLI::ExistingPath, "PATH")
        ->required();
}

void describeDiagnose(CLI::App* command, Arguments& arguments) {
    addChecked(command, "DEVICE", arguments.key,
               "Device folder, or a copy or a disk image of its flash disk", CLI::ExistingPath,
               "PATH")
        ->required();
    addChecked(command, "--manifest", arguments.other,
               "Update key to compare the installed files with (default: no comparison)",
               CLI::ExistingPath, "PATH");
    addInstrumentOptions(command, arguments.check);
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
    {"make", "Make an update key from its files", describeMake, runMake},
    {"check", "Report the faults of a key, and what the device will do with it", describeCheck,
     runCheck},
    {"info", "Show the version, notes, sizes and files of a key", addKey, runInfo},
    {"image", "Make a disk image of a key", describeImage, runImage},
    {"sticks", "List the USB sticks to which a key can be written", [](CLI::App*, Arguments&) {},
     runSticks},
    {"write", "Write a key to USB sticks and read each one back", describeWrite, runWrite},
    {"diff", "Show the differences between a key and another key or a device", describeDiff,
     runDiff},
    {"rehearse", "Run the real updater with a key on a copy of a device", describeRehearse,
     runRehearse},
    {"diagnose", "Report what is wrong with a returned instrument, and how to repair it",
     describeDiagnose, runDiagnose},
};

}  // namespace

void describeCommands(CLI::App& app, Arguments& arguments) {
    app.set_version_flag("--version", std::string("updatekey ") + UPDATEKEY_VERSION);
    app.set_help_all_flag("--help-all", "Print the help of all commands and exit");
    app.add_flag("--json", arguments.output.json, "Write the report as JSON, for scripts");
    app.add_flag("--quiet", arguments.output.quiet,
                 "Write only findings, faulty sticks and repair steps, and no progress bar");
    app.require_subcommand(0, 1);
    app.allow_windows_style_options(false);  // "/" begins a path on every system
    app.fallthrough();
    app.footer(
        "Exit codes: 0 success, and nothing was found; 1 there is a finding, a difference, a stick "
        "that could not be written, a rehearsal that differs from the prediction, or a repair to "
        "do; 2 wrong usage, or the command failed; 3 nothing was written, because the key has "
        "errors.");
    for (const Command& command : COMMANDS)
        command.describe(app.add_subcommand(command.name, command.description), arguments);
}

int runCommand(const CLI::App& app, Arguments& arguments) {
    if (!arguments.output.quiet)
        arguments.check.progress = makeProgressBar();
    for (const Command& command : COMMANDS)
        if (app.got_subcommand(command.name))
            return command.run(arguments);
    std::string names;
    for (const Command& command : COMMANDS)
        names += std::string(names.empty() ? "" : ", ") + command.name;
    throw std::runtime_error("no command was given; the commands are " + names +
                             "; updatekey --help explains them");
}
