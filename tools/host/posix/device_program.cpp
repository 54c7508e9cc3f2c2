#include "tools/host/device_program.h"

#include <signal.h>

#include <chrono>
#include <cstdlib>
#include <optional>
#include <stdexcept>
#include <thread>

#include "platform/instrument_screen.h"
#include "platform/posix/files/device.h"
#include "platform/posix/processes/device_processes.h"
#include "tools/host/host_file.h"
#include "tools/host/interrupt.h"
#include "tools/host/process.h"

namespace fs = std::filesystem;

namespace {

const std::string SIZE = std::to_string(instrument::SCREEN_WIDTH) + "x" +
                         std::to_string(instrument::SCREEN_HEIGHT) + "x24";

// A virtual X server with a screen of the instrument's size. It ends with the object.
class VirtualScreen {
  public:
    explicit VirtualScreen(const fs::path& scratch)
        : number_(scratch / "screen"),
          server_({{"Xvfb", "-displayfd", "1", "-screen", "0", SIZE, "-nolisten", "tcp"},
                   {},
                   {},
                   number_,
                   scratch / "screen-errors"}) {
        // The server takes a free number and prints it when it is ready.
        while (readHostFileIfThere(number_).find('\n') == std::string::npos) {
            if (server_.hasEnded())
                throw std::runtime_error("the virtual screen cannot be started: " +
                                         readHostFileIfThere(scratch / "screen-errors"));
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
    }

    // The value of DISPLAY for programs that are to be shown on it.
    std::string name() const {
        const std::string printed = readHostFile(number_);
        return ":" + printed.substr(0, printed.find('\n'));
    }

  private:
    fs::path number_;
    Process server_;
};

bool endApplications(const fs::path& device) {
    setDeviceRoot(device.string());
    const auto applications = host::deviceProcesses();
    for (const host::DeviceProcess& application : applications)
        ::kill(static_cast<pid_t>(application.id), SIGTERM);
    return !applications.empty();
}

}  // namespace

struct DeviceProgram::State {
    fs::path device;
    fs::path scratch;
    std::optional<VirtualScreen> screen{};
    Leftover applications{[this] { endApplications(device); }};
    std::optional<Process> process{};
};

DeviceProgram::DeviceProgram(const fs::path& updater, const fs::path& device,
                             const fs::path& scratch, bool hidden)
    : state_(new State{device, scratch}) {
    const fs::path counter = updater.parent_path() / "frame-counter.preload";
    Command command{{updater.string(), "/auto"},
                    {{"UPDATER_DEVICE", device.string()},
                     {"UPDATEKEY_FRAMES", (scratch / "frames").string()},
                     {"LD_PRELOAD", fs::exists(counter) ? counter.string() : ""}}};
    command.output = scratch / "output.txt";
    const char* const display = std::getenv("DISPLAY");
    if (hidden || display == nullptr || *display == '\0')
        command.variables["DISPLAY"] = state_->screen.emplace(scratch).name();
    state_->process.emplace(command);
}

DeviceProgram::~DeviceProgram() {
    state_->process.reset();
    endApplication();
}

bool DeviceProgram::hasEnded() {
    return state_->process->hasEnded();
}

int DeviceProgram::exitCode() const {
    return state_->process->exitCode();
}

void DeviceProgram::askToEnd() {
    state_->process->askToEnd();
}

bool DeviceProgram::endApplication() {
    return endApplications(state_->device);
}

std::string DeviceProgram::output() const {
    return readHostFileIfThere(state_->scratch / "output.txt");
}

long DeviceProgram::frames() const {
    const std::string frames = readHostFileIfThere(state_->scratch / "frames");
    return frames.empty() ? -1 : std::strtol(frames.c_str(), nullptr, 10);
}

fs::path DeviceProgram::updater() {
    const fs::path own = fs::read_symlink("/proc/self/exe").parent_path();
    for (const fs::path& folder : {own, own / "../libexec/kestrel-updater"})
        if (fs::exists(folder / "updater"))
            return fs::canonical(folder / "updater");
    return {};
}

bool DeviceProgram::startsHere(const fs::path& application) {
    const std::string start = readHostFileIfThere(application).substr(0, 4);
    const fs::perms runs = fs::perms::owner_exec | fs::perms::group_exec | fs::perms::others_exec;
    return (fs::status(application).permissions() & runs) != fs::perms::none &&
           (start == "\177ELF" || start.rfind("#!", 0) == 0);
}
