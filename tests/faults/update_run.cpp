#include "tests/faults/update_run.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>

#include "platform/posix/files/device.h"
#include "platform/utf.h"
#include "support/logger.h"
#include "support/path_constants.h"
#include "ui/simple_ui.h"

namespace {

// The results of a run, kept in shared memory however it ends.
struct Record {
    static constexpr std::size_t MOST_TEXT = std::size_t{1} << 15;
    bool ended;
    RunEnd end;
    bool wroteOutside;
    std::size_t size;
    char text[MOST_TEXT];  // lines: "C" with a call's name, or "L" with a logged message

    void add(char kind, const std::string& line) {
        const std::string entry = kind + line + "\n";
        if (size + entry.size() > sizeof text)
            return;
        std::memcpy(text + size, entry.data(), entry.size());
        size += entry.size();
    }
};

// Memory that a run shares with its parent process only.
class SharedRecord {
  public:
    SharedRecord()
        : memory_(::mmap(nullptr, sizeof(Record), PROT_READ | PROT_WRITE,
                         MAP_SHARED | MAP_ANONYMOUS, -1, 0)) {
        if (memory_ == MAP_FAILED)
            std::abort();
        record_ = new (memory_) Record();
    }
    SharedRecord(const SharedRecord&) = delete;
    SharedRecord& operator=(const SharedRecord&) = delete;
    ~SharedRecord() { ::munmap(memory_, sizeof(Record)); }

    Record& get() const { return *record_; }

  private:
    void* memory_;
    Record* record_;
};

bool startsWith(const std::string& text, const std::string& start) {
    return text.compare(0, start.size(), start) == 0;
}

bool isOutside(const std::string& path) {
    const std::string installation = deviceRoot() + "/FlashDisk/VELD";
    const std::string hostPath = host::toHostPath(host::toUtf16(path).c_str());
    return hostPath != installation && !startsWith(hostPath, installation + "/");
}

// The call hook's state during a run: counts calls, records them, locks folders and applies the
// fault.
class Surroundings {
  public:
    Surroundings(Record& record, const RunPlan& plan) : record_(record), plan_(plan) {
        setCallHook([this](const HookedCall& call) { return onCall(call); });
    }
    Surroundings(const Surroundings&) = delete;
    Surroundings& operator=(const Surroundings&) = delete;
    ~Surroundings() { setCallHook({}); }

    bool launched() const { return launched_; }

  private:
    DWORD onCall(const HookedCall& call) {
        const std::string name = call.name;
        if (name == "OutputDebugStringW")
            return onDebugOutput(call.arguments[0]);
        if (name == "Sleep" || launched_)
            return ERROR_GEN_FAILURE;
        const DWORD error = isFileCall(name) ? onFileCall(call) : ERROR_SUCCESS;
        launched_ = name == "CreateProcessW";
        return launched_ ? ERROR_FILE_NOT_FOUND : error;
    }

    // Every log message is traced right after it is written; other traces begin differently.
    DWORD onDebugOutput(const std::string& text) {
        const bool logged = startsWith(text, "Error ") || startsWith(text, "Update ");
        if (logged && !startsWith(text, "Error opening log"))
            record_.add('L', text.substr(0, text.find('\n')));
        return ERROR_GEN_FAILURE;
    }

    DWORD onFileCall(const HookedCall& call) {
        const std::string name = call.name;
        record_.add('C', name);
        ++calls_;
        const bool reads = name == "_wfopen" && call.arguments[1] == "rb";
        if (changesTheDisk(name) && !reads) {
            const bool copies = name == "CopyFileW";
            const bool moves = name == "MoveFileW";
            record_.wroteOutside |= !copies && isOutside(call.arguments[0]);
            record_.wroteOutside |= (copies || moves) && isOutside(call.arguments[1]);
        }
        if (plan_.fault.kind != FaultKind::None && calls_ == plan_.fault.call)
            return applyFault(plan_.fault, call);
        const bool movesGuiData =
            name == "MoveFileW" && call.arguments[0] == "/FlashDisk/VELD/ORBUI";
        return plan_.guiDataLocked && movesGuiData ? ERROR_SHARING_VIOLATION : ERROR_SUCCESS;
    }

    Record& record_;
    RunPlan plan_;
    uint32_t calls_ = 0;
    bool launched_ = false;
};

RunEnd runToItsEnd(SimpleUI& screen, const Surroundings& surroundings) {
    constexpr int MOST_FRAMES = 200;
    Logger::instance().setPath(INSTALL_ROOT + "/ORBUI/data/../../Updater-log.txt");
    for (int frame = 0; frame < MOST_FRAMES; ++frame) {
        screen.tick();
        if (surroundings.launched())
            return RunEnd::Complete;
        // After a failed update any key restarts.
        screen.onKey(VK_HOME);
        if (surroundings.launched())
            return RunEnd::Failed;
    }
    return RunEnd::Updating;
}

[[noreturn]] void runInChild(Record& record, const RunPlan& plan) {
    constexpr unsigned LONGEST_SECONDS = 60;
    constexpr int NO_WAY_OUT = 3;
    ::alarm(LONGEST_SECONDS);
    const int nowhere = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
    ::dup2(nowhere, STDOUT_FILENO);
    const Surroundings surroundings(record, plan);
    SimpleUI screen;
    record.end = runToItsEnd(screen, surroundings);
    record.ended = true;
    screen.onKey(VK_END);
    screen.onKey(VK_END);
    ::_exit(NO_WAY_OUT);
}

}  // namespace

const char* nameOf(RunEnd end) {
    static const char* const NAMES[] = {"complete", "failed",  "updating",
                                        "killed",   "crashed", "hung"};
    return NAMES[static_cast<std::size_t>(end)];
}

UpdateRun runUpdate(const DeviceFolder& device, const RunPlan& plan) {
    const SharedRecord shared;
    Record& record = shared.get();
    std::fflush(nullptr);
    const pid_t child = ::fork();
    if (child == 0) {
        setDeviceRoot(device.root().string());
        runInChild(record, plan);
    }
    int status = 0;
    ::waitpid(child, &status, 0);

    UpdateRun run;
    run.hadWayOut = WIFEXITED(status) && WEXITSTATUS(status) == 0;
    run.wroteOutside = record.wroteOutside;
    const bool killed = WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
    const bool hung = WIFSIGNALED(status) && WTERMSIG(status) == SIGALRM;
    run.end = record.ended && WIFEXITED(status) ? record.end
              : killed                          ? RunEnd::Killed
              : hung                            ? RunEnd::Hung
                                                : RunEnd::Crashed;
    const std::string text(record.text, record.size);
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = text.find('\n', start);
        const std::string line = text.substr(start + 1, end - start - 1);
        (text[start] == 'C' ? run.calls : run.loggedLines).push_back(line);
        start = end + 1;
    }
    return run;
}
