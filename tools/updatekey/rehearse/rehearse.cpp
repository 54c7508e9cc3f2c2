#include "tools/updatekey/rehearse/rehearse.h"

#include <chrono>
#include <cstdlib>
#include <functional>
#include <stdexcept>
#include <thread>

#include "tools/diagnosis/installation.h"
#include "tools/diagnosis/log_lines.h"
#include "tools/host/folder_tree.h"
#include "tools/host/host_file.h"
#include "tools/host/process.h"
#include "tools/host/temporary_folder.h"
#include "tools/host/virtual_screen.h"
#include "tools/updatekey/check/key_paths.h"
#include "tools/updatekey/difference.h"
#include "update/updater.h"

namespace fs = std::filesystem;

namespace {

using Clock = std::chrono::steady_clock;

constexpr const char* FLASH = "FlashDisk";
const std::string LOG = FLASH + ("/" + keypaths::MAKER + "/") + keylayout::LOG;
const std::string PROGRAM = FLASH + ("/" + keypaths::PROGRAM);

// A copy of the device in which the key replaces any key plugged in. Processes still running from
// the copy at the end are killed; only the rehearsal can have started them.
class Stage {
  public:
    Stage(const fs::path& device, const fs::path& key)
        : folder_(fs::temp_directory_path() / "rehearsal") {
        for (const fs::directory_entry& entry : fs::directory_iterator(device))
            if (entry.path().filename() != "USB HD")
                fs::copy(entry.path(), this->device() / entry.path().filename(),
                         fs::copy_options::recursive | fs::copy_options::copy_symlinks);
        fs::create_directory_symlink(fs::canonical(key), this->device() / "USB HD");
    }
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;
    ~Stage() { endApplication(); }

    fs::path device() const {
        fs::path folder = folder_.path() / "device";
        fs::create_directories(folder);
        return folder;
    }
    fs::path outputFile() const { return folder_.path() / "output.txt"; }
    fs::path framesFile() const { return folder_.path() / "frames.txt"; }

    // Returns whether the application was running.
    bool endApplication() const {
        const std::vector<long> processes = processesOf(device());
        for (const long process : processes)
            endProcess(process);
        return !processes.empty();
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

fs::path updaterBesideThisProgram() {
    for (const fs::path& folder : {ownFolder(), ownFolder() / "../libexec/kestrel-updater"})
        if (fs::exists(folder / "updater"))
            return fs::canonical(folder / "updater");
    return {};
}

int32_t outcomeOf(const std::string& log) {
    const LogOutcome outcome = readLog(log).outcome;
    return outcome == LogOutcome::Succeeded ? UpdateComplete
           : outcome == LogOutcome::Failed  ? UpdateFailed
                                            : Updating;
}

// Whether this computer can start the application: a native program or a script. A real
// instrument's application is neither.
bool startsHere(const fs::path& application) {
    const std::string start = readHostFileIfThere(application).substr(0, 4);
    const fs::perms runs = fs::perms::owner_exec | fs::perms::group_exec | fs::perms::others_exec;
    return (fs::status(application).permissions() & runs) != fs::perms::none &&
           (start == "\177ELF" || start.rfind("#!", 0) == 0);
}

// Whether the updater would now only wait for a key press: after a failed update, or when it cannot
// start the application.
bool waitsForAKey(const fs::path& device) {
    const int32_t outcome = outcomeOf(readHostFileIfThere(device / LOG));
    return outcome == UpdateFailed || (outcome == UpdateComplete && !startsHere(device / PROGRAM));
}

// Waits until the process has ended, or the condition no longer holds. Returns whether it has
// ended.
bool endsWhile(Process& process, const std::function<bool()>& condition) {
    while (!process.hasEnded()) {
        if (!condition())
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    return true;
}

// Returns the variables with which the updater runs on the stage, and counts its frames.
std::map<std::string, std::string> variablesFor(const fs::path& updater, const Stage& stage) {
    const fs::path counter = updater.parent_path() / "frame-counter.preload";
    return {{"UPDATER_DEVICE", stage.device().string()},
            {"UPDATEKEY_FRAMES", stage.framesFile().string()},
            {"LD_PRELOAD", fs::exists(counter) ? counter.string() : ""}};
}

// Runs the updater until it exits, or until nothing more will happen.
void runUpdater(const RehearseOptions& options, const fs::path& updater, const Stage& stage,
                RehearseReport& report) {
    std::optional<VirtualScreen> screen;
    Command command{{updater.string(), "/auto"}, variablesFor(updater, stage)};
    command.output = stage.outputFile();
    const char* const display = std::getenv("DISPLAY");
    if (options.hidden || display == nullptr || *display == '\0')
        command.variables["DISPLAY"] = screen.emplace().name();

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
    Process process(command);
    if (endsWhile(process, goesOn)) {
        report.exitCode = process.exitCode();
    } else {
        report.exitCode = -1;
        process.askToEnd();
        const double last = seconds() + 10;
        endsWhile(process, [&] { return seconds() < last; });
    }
    report.seconds = seconds();
    report.applicationStarted = stage.endApplication();
}

}  // namespace

RehearseReport rehearse(const RehearseOptions& options) {
    const fs::path updater =
        options.updater.empty() ? updaterBesideThisProgram() : fs::canonical(options.updater);
    if (updater.empty())
        throw std::runtime_error(
            "the updater was not found beside updatekey; name its program with --updater");
    if (!fs::is_directory(options.device / FLASH))
        throw std::runtime_error(options.device.string() + " has no folder FlashDisk");

    RehearseReport report;
    CheckOptions check = options.check;
    check.installedSize = 0;
    for (const TreeEntry& entry : readTree(options.device / FLASH))
        *check.installedSize += sizeOnFlash(entry.size);
    report.check = checkKey(options.key, check);
    if (!report.check.prediction.accepted)
        return report;
    checkVersions(applicationVersion(options.device / FLASH / keypaths::APPLICATION),
                  report.check.prediction.version, report.check.findings);
    removeFindings(report.check.findings, check.accepted);

    const Stage stage(options.device, options.key);
    fs::remove(stage.device() / LOG);
    FileSet before = filesIn(options.device / FLASH);
    before.erase(keypaths::MAKER + "/" + keylayout::LOG);
    runUpdater(options, updater, stage, report);
    report.rehearsed = true;
    report.startsHere = startsHere(stage.device() / PROGRAM);

    report.log = readHostFileIfThere(stage.device() / LOG);
    report.output = readHostFileIfThere(stage.outputFile());
    if (report.log.empty() && !report.timedOut)
        throw std::runtime_error(
            "the updater did not start (exit code " + std::to_string(report.exitCode) +
            "); without a display, add --hidden. The updater's output: " + report.output);
    report.state = outcomeOf(report.log);
    const FileSet after = filesIn(stage.device() / FLASH);
    report.changes = compareFiles(before, after);
    report.asPredicted = report.state == report.check.prediction.state &&
                         installedAsPredicted(options.key, report.check.prediction, after);
    const std::string frames = readHostFileIfThere(stage.framesFile());
    if (!frames.empty())
        report.frames = std::strtol(frames.c_str(), nullptr, 10);
    if (!options.keep.empty())
        fs::copy(stage.device(), options.keep,
                 fs::copy_options::recursive | fs::copy_options::copy_symlinks);
    return report;
}
