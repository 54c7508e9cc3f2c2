#include "tools/updatekey/rehearse/rehearse.h"

#include <chrono>
#include <functional>
#include <stdexcept>
#include <thread>

#include "tools/diagnosis/installation.h"
#include "tools/diagnosis/log_lines.h"
#include "tools/host/device_program.h"
#include "tools/host/folder_tree.h"
#include "tools/host/host_file.h"
#include "tools/host/temporary_folder.h"
#include "tools/updatekey/check/key_paths.h"
#include "tools/updatekey/difference.h"
#include "update/updater.h"

namespace fs = std::filesystem;

namespace {

using Clock = std::chrono::steady_clock;

using keypaths::FLASH_DISK;

const std::string LOG = FLASH_DISK + "/" + keypaths::MAKER + "/" + keylayout::LOG;
const std::string PROGRAM = FLASH_DISK + "/" + keypaths::PROGRAM;

// A copy of the device in which the key replaces any key plugged in. The flash disk may be a link
// to a folder, which is copied too.
class Stage {
  public:
    Stage(const fs::path& device, const fs::path& key)
        : folder_(fs::temp_directory_path() / "rehearsal") {
        for (const fs::directory_entry& entry : fs::directory_iterator(device))
            if (const fs::path name = entry.path().filename(); name != keypaths::STORAGE)
                copy(name == FLASH_DISK ? fs::canonical(entry.path()) : entry.path(),
                     this->device() / name);
        copy(key / keypaths::MAKER, this->device() / keypaths::STORAGE / keypaths::MAKER);
    }

    fs::path device() const { return folder_.path() / "device"; }
    const fs::path& scratch() const { return folder_.path(); }

    static void copy(const fs::path& from, const fs::path& to) {
        fs::create_directories(fs::absolute(to).parent_path());
        fs::copy(from, to, fs::copy_options::recursive | fs::copy_options::copy_symlinks);
    }

  private:
    TemporaryFolder folder_;
};

// Whether the installed application and GUI data match the prediction byte for byte.
bool installedAsPredicted(const fs::path& key, const Prediction& prediction, const FileSet& flash) {
    FileSet expected;
    for (const std::string& path : prediction.copied)
        expected[path] = {key / path, fs::file_size(key / path)};
    FileSet installed;
    for (const auto& file : flash)
        if (startsWith(file.first, keypaths::APPLICATION + "/") ||
            startsWith(file.first, keypaths::GUI + "/"))
            installed.insert(file);
    return compareFiles(expected, installed).empty();
}

int32_t outcomeOf(const std::string& log) {
    const LogOutcome outcome = readLog(log).outcome;
    return outcome == LogOutcome::Succeeded ? UpdateComplete
           : outcome == LogOutcome::Failed  ? UpdateFailed
                                            : Updating;
}

// Whether the updater would now only wait for a key press: after a failed update, or when it cannot
// start the application.
bool waitsForAKey(const fs::path& device) {
    const int32_t outcome = outcomeOf(readHostFileIfThere(device / LOG));
    return outcome == UpdateFailed ||
           (outcome == UpdateComplete && !DeviceProgram::startsHere(device / PROGRAM));
}

// Waits until the process has ended, or the condition no longer holds. Returns whether it has
// ended.
bool endsWhile(DeviceProgram& program, const std::function<bool()>& condition) {
    while (!program.hasEnded()) {
        if (!condition())
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    return true;
}

// Runs the updater until it exits, or until nothing more will happen.
void runUpdater(const RehearseOptions& options, const fs::path& updater, const Stage& stage,
                RehearseReport& report) {
    const Clock::time_point start = Clock::now();
    const auto seconds = [&] {
        return std::chrono::duration<double>(Clock::now() - start).count();
    };
    const auto goesOn = [&] {
        if (options.waited)
            options.waited(seconds());
        const bool waits = waitsForAKey(stage.device());
        report.timedOut = !waits && seconds() > options.timeout;
        return !waits && !report.timedOut;
    };
    DeviceProgram program(updater, stage.device(), stage.scratch(), options.hidden);
    if (endsWhile(program, goesOn)) {
        report.exitCode = program.exitCode();
    } else {
        report.exitCode = -1;
        program.askToEnd();
        const double last = seconds() + 10;
        endsWhile(program, [&] { return seconds() < last; });
    }
    report.seconds = seconds();
    report.applicationStarted = program.endApplication();
    report.output = program.output();
    report.frames = program.frames();
}

}  // namespace

RehearseReport rehearse(const RehearseOptions& options, CheckOptions check) {
    const fs::path updater =
        options.updater.empty() ? DeviceProgram::updater() : fs::canonical(options.updater);
    if (updater.empty())
        throw std::runtime_error(
            "the updater was not found beside updatekey; name its program with --updater");
    if (!fs::is_directory(options.device / FLASH_DISK))
        throw std::runtime_error(options.device.generic_string() + " has no folder " + FLASH_DISK);

    RehearseReport report;
    check.installedSize = 0;
    for (const TreeEntry& entry : readTree(options.device / FLASH_DISK))
        *check.installedSize += sizeOnFlash(entry.size);
    report.check = checkKey(options.key, check);
    if (!report.check.prediction.accepted)
        return report;
    checkVersions(applicationVersion(options.device / FLASH_DISK / keypaths::APPLICATION),
                  report.check.prediction.version, report.check.findings);
    removeFindings(report.check.findings, check.accepted);

    const Stage stage(options.device, options.key);
    fs::remove(stage.device() / LOG);
    FileSet before = filesIn(options.device / FLASH_DISK);
    before.erase(keypaths::MAKER + "/" + keylayout::LOG);
    runUpdater(options, updater, stage, report);
    report.rehearsed = true;
    report.startsHere = DeviceProgram::startsHere(stage.device() / PROGRAM);

    report.log = readHostFileIfThere(stage.device() / LOG);
    if (report.log.empty() && !report.timedOut)
        throw std::runtime_error(
            "the updater did not start (exit code " + std::to_string(report.exitCode) +
            "); without a display, add --hidden. The updater's output: " + report.output);
    report.state = outcomeOf(report.log);
    const FileSet after = filesIn(stage.device() / FLASH_DISK);
    report.changes = compareFiles(before, after);
    report.asPredicted = report.state == report.check.prediction.state &&
                         installedAsPredicted(options.key, report.check.prediction, after);
    if (!options.keep.empty())
        Stage::copy(stage.device(), options.keep);
    return report;
}
