#include "tools/host/device_program.h"

#include <stdexcept>
#include <system_error>

#include "platform/win32.h"
#include "tools/host/host_file.h"
#include "tools/host/interrupt.h"
#include "tools/host/windows/handle.h"

// What follows means the desktop's own function.
#undef CreateProcessW

namespace fs = std::filesystem;

namespace {

constexpr DWORD QUIETLY = 0x8;  // DDD_NO_BROADCAST_SYSTEM

// A drive letter for a folder, because the updater works on the root of the current drive.
class Drive {
  public:
    explicit Drive(const fs::path& folder)
        : folder_(folder), name_(freeName()), leftover_([this] { remove(); }) {
        std::error_code error;
        if (DefineDosDeviceW(QUIETLY, name_.c_str(), folder_.c_str()) != FALSE &&
            fs::is_directory(root(), error))
            return;
        remove();
        throw std::runtime_error("this computer gives the folder no drive letter");
    }
    Drive(const Drive&) = delete;
    Drive& operator=(const Drive&) = delete;
    ~Drive() { remove(); }

    fs::path root() const { return name_ + L"\\"; }

  private:
    static std::wstring freeName() {
        const DWORD used = GetLogicalDrives();
        for (wchar_t letter = L'Z'; letter >= L'D'; --letter)
            if ((used >> (letter - L'A') & 1U) == 0)
                return std::wstring(1, letter) + L":";
        throw std::runtime_error("no drive letter is free");
    }
    void remove() const {
        DefineDosDeviceW(QUIETLY | DDD_REMOVE_DEFINITION | DDD_EXACT_MATCH_ON_REMOVE, name_.c_str(),
                         folder_.c_str());
    }

    fs::path folder_;
    std::wstring name_;
    Leftover leftover_;
};

void requireLibraries(const fs::path& folder) {
    for (const char* const library : {"libEGL.dll", "libGLESv2.dll"})
        if (!fs::exists(folder / library))
            throw std::runtime_error(
                "the updater needs libEGL.dll and libGLESv2.dll in " + folder.generic_string() +
                "; README.txt, which comes with updatekey, says where they are from");
}

}  // namespace

struct DeviceProgram::State {
    explicit State(const fs::path& device, const fs::path& folder)
        : drive(device), scratch(folder), job(CreateJobObjectW(nullptr, nullptr)) {}

    Drive drive;
    fs::path scratch;
    Handle job;  // the updater and the programs that it starts
    Handle process;
    bool ended = false;  // from outside
    Leftover leftover{[this] { TerminateJobObject(job.get(), 1); }};
};

DeviceProgram::DeviceProgram(const fs::path& updater, const fs::path& device,
                             const fs::path& scratch, bool) {
    requireLibraries(updater.parent_path());
    state_ = std::make_unique<State>(device, scratch);
    const Handle output = openHandle(scratch / "output.txt", GENERIC_WRITE, CREATE_ALWAYS, 0);
    SetHandleInformation(output.get(), HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = startup.hStdError = output.get();
    PROCESS_INFORMATION process{};
    std::wstring words = L"\"" + updater.wstring() + L"\" /auto";
    // It must belong to the job before it can start another program.
    if (CreateProcessW(updater.c_str(), words.data(), nullptr, nullptr, TRUE, CREATE_SUSPENDED,
                       nullptr, state_->drive.root().c_str(), &startup, &process) == FALSE)
        failAt(updater);
    state_->process.reset(process.hProcess);
    AssignProcessToJobObject(state_->job.get(), process.hProcess);
    ResumeThread(process.hThread);
    CloseHandle(process.hThread);
}

DeviceProgram::~DeviceProgram() {
    askToEnd();
}

bool DeviceProgram::hasEnded() {
    return WaitForSingleObject(state_->process.get(), 0) == WAIT_OBJECT_0;
}

int DeviceProgram::exitCode() const {
    DWORD code = 0;
    GetExitCodeProcess(state_->process.get(), &code);
    return state_->ended ? -1 : static_cast<int>(code);
}

// Ends the application too: programs of Windows cannot be asked.
void DeviceProgram::askToEnd() {
    state_->ended = !hasEnded();
    TerminateJobObject(state_->job.get(), 1);
    WaitForSingleObject(state_->process.get(), 5000);
}

bool DeviceProgram::endApplication() {
    JOBOBJECT_BASIC_ACCOUNTING_INFORMATION job{};
    QueryInformationJobObject(state_->job.get(), JobObjectBasicAccountingInformation, &job,
                              sizeof job, nullptr);
    TerminateJobObject(state_->job.get(), 1);
    return job.ActiveProcesses > 0;
}

std::string DeviceProgram::output() const {
    return readHostFileIfThere(state_->scratch / "output.txt");
}

long DeviceProgram::frames() const {
    return -1;
}

fs::path DeviceProgram::updater() {
    WCHAR own[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, own, MAX_PATH);
    const fs::path updater = fs::path(own).parent_path() / "updater.exe";
    return fs::exists(updater) ? updater : fs::path();
}

bool DeviceProgram::startsHere(const fs::path& application) {
    DWORD type = 0;
    return GetBinaryTypeW(application.c_str(), &type) != FALSE;
}
