#include "tests/faults/update_run.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <fstream>

#include "platform/posix/files/device.h"
#include "platform/utf.h"
#include "support/logger.h"
#include "support/path_constants.h"
#include "tools/host/folder_tree.h"
#include "ui/simple_ui.h"

namespace {

bool isOutside(const std::string& path) {
    const std::string installation = deviceRoot() + "/FlashDisk/VELD";
    const std::string hostPath = host::toHostPath(host::toUtf16(path).c_str());
    return hostPath != installation && !startsWith(hostPath, installation + "/");
}

// The surroundings of the updater in the process of a run: writes what it does to a file, one line
// for each event, and applies the fault.
class Surroundings {
  public:
    Surroundings(const std::string& events, const Fault& fault, bool guiDataIsLocked)
        : events_(events), fault_(fault), guiDataIsLocked_(guiDataIsLocked) {
        setCallHook([this](const HookedCall& call) { return onCall(call); });
    }

    bool launched() const { return launched_; }

    void report(const char* event, const std::string& text) {
        events_ << event << ' ' << text << std::endl;
    }

  private:
    DWORD onCall(const HookedCall& call) {
        const std::string name = call.name;
        if (name == "OutputDebugStringW")
            return onDebugOutput(call.arguments[0]);
        if (name == "Sleep" || launched_)
            return ERROR_GEN_FAILURE;
        const DWORD error = isCounted(name) ? onCountedCall(call) : ERROR_SUCCESS;
        launched_ = name == "CreateProcessW";
        return launched_ ? ERROR_FILE_NOT_FOUND : error;
    }

    // Every log message is traced right after it is written; other traces begin differently.
    DWORD onDebugOutput(const std::string& text) {
        const bool logged = startsWith(text, "Error ") || startsWith(text, "Update ");
        if (logged && !startsWith(text, "Error opening log"))
            report("logged", text.substr(0, text.find('\n')));
        return ERROR_GEN_FAILURE;
    }

    DWORD onCountedCall(const HookedCall& call) {
        const std::string name = call.name;
        report("call", name);
        const bool copies = name == "CopyFileW";
        const bool reads = name == "_wfopen" && call.arguments[1] == "rb";
        if (changesTheDisk(name) && !reads &&
            (isOutside(call.arguments[copies ? 1 : 0]) ||
             (name == "MoveFileW" && isOutside(call.arguments[1]))))
            report("outside", name);
        if (++calls_ == fault_.call)
            return apply(fault_, call);
        const bool movesGuiData =
            name == "MoveFileW" && call.arguments[0] == "/FlashDisk/VELD/ORBUI";
        return guiDataIsLocked_ && movesGuiData ? ERROR_SHARING_VIOLATION : ERROR_SUCCESS;
    }

    std::ofstream events_;
    Fault fault_;
    bool guiDataIsLocked_;
    uint32_t calls_ = 0;
    bool launched_ = false;
};

std::string runToItsEnd(SimpleUI& screen, const Surroundings& surroundings) {
    constexpr int MOST_FRAMES = 200;
    Logger::instance().setPath(INSTALL_ROOT + "/ORBUI/data/../../Updater-log.txt");
    for (int frame = 0; frame < MOST_FRAMES; ++frame) {
        screen.tick();
        if (surroundings.launched())
            return "complete";
        // After a failed update any key restarts.
        screen.onKey(VK_HOME);
        if (surroundings.launched())
            return "failed";
    }
    return "endless";
}

[[noreturn]] void runInChild(Surroundings& surroundings) {
    constexpr unsigned LONGEST_SECONDS = 60;
    constexpr int NO_WAY_OUT = 3;
    ::alarm(LONGEST_SECONDS);
    ::dup2(::open("/dev/null", O_WRONLY | O_CLOEXEC), STDOUT_FILENO);
    SimpleUI screen;
    surroundings.report("end", runToItsEnd(screen, surroundings));
    screen.onKey(VK_END);
    screen.onKey(VK_END);
    ::_exit(NO_WAY_OUT);
}

}  // namespace

UpdateRun runUpdate(const DeviceFolder& device, const Fault& fault, bool guiDataIsLocked) {
    const std::string file = device.root().string() + ".events";
    std::fflush(nullptr);
    const pid_t child = ::fork();
    if (child == 0) {
        setDeviceRoot(device.root().string());
        Surroundings surroundings(file, fault, guiDataIsLocked);
        runInChild(surroundings);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    std::ifstream events(file);
    std::filesystem::remove(file);

    UpdateRun run;
    run.hadWayOut = WIFEXITED(status) && WEXITSTATUS(status) == 0;
    std::string text;
    for (std::string event; events >> event && std::getline(events >> std::ws, text);) {
        if (event == "call")
            run.calls.push_back(text);
        else if (event == "logged")
            run.loggedLines.push_back(text);
        else if (event == "outside")
            run.wroteOutside = true;
        else
            run.end = text;
    }
    const int signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    if (run.end.empty() || signal != 0)
        run.end = signal == SIGKILL ? "killed" : signal == SIGALRM ? "hung" : "crashed";
    return run;
}
