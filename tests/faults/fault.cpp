#include "tests/faults/fault.h"

#include <csignal>
#include <filesystem>
#include <fstream>
#include <map>

#include "platform/posix/files/device.h"
#include "platform/posix/files/read_file.h"
#include "platform/utf.h"

namespace {

// The errors that each call can return on the instrument's disks.
const std::map<std::string, std::vector<DWORD>>& errorsOfCalls() {
    static const std::map<std::string, std::vector<DWORD>> ERRORS = {
        {"CreateDirectoryW", {3, 5, 112, 183}},
        {"CopyFileW", {2, 3, 5, 32, 112}},
        {"GetFileAttributesW", {2, 3, 5, 32}},
        {"SetFileAttributesW", {2, 3, 5, 32}},
        {"DeleteFileW", {2, 3, 5, 32}},
        {"RemoveDirectoryW", {2, 3, 5, 32, 145}},
        {"MoveFileW", {2, 3, 5, 32, 112, 183}},
        {"FindFirstFileW", {2, 3, 5}},
        {"FindNextFileW", {3, 5}},
        {"FindClose", {}},
        {"_wfopen", {2, 3, 5, 32, 112}},
        {"CreateProcessW", {}},
    };
    return ERRORS;
}

std::string hostPath(const std::string& path) {
    return host::toHostPath(host::toUtf16(path).c_str());
}

void copyHalf(const HookedCall& call) {
    const std::string bytes = host::readFile(hostPath(call.arguments[0]));
    std::ofstream(hostPath(call.arguments[1]), std::ios::binary)
        << bytes.substr(0, bytes.size() / 2);
}

// Makes the call when it changes the disk; other calls have no effect on what remains after a kill.
void make(const HookedCall& call) {
    const std::string name = call.name;
    std::vector<std::u16string> texts;
    for (const std::string& argument : call.arguments)
        texts.push_back(host::toUtf16(argument));
    if (name == "CreateDirectoryW")
        CreateDirectoryW(texts[0].c_str(), nullptr);
    else if (name == "CopyFileW")
        CopyFileW(texts[0].c_str(), texts[1].c_str(), FALSE);
    else if (name == "MoveFileW")
        MoveFileW(texts[0].c_str(), texts[1].c_str());
    else if (name == "DeleteFileW")
        DeleteFileW(texts[0].c_str());
    else if (name == "RemoveDirectoryW")
        RemoveDirectoryW(texts[0].c_str());
    else if (name == "SetFileAttributesW")
        SetFileAttributesW(texts[0].c_str(), static_cast<DWORD>(std::stoul(call.arguments[1])));
    else if (name == "_wfopen")
        _wfopen(texts[0].c_str(), texts[1].c_str());
}

[[noreturn]] void die() {
    std::raise(SIGKILL);
    std::abort();
}

}  // namespace

std::string Fault::text() const {
    switch (kind) {
        case FaultKind::Fail:
            return "fails with " + std::to_string(error);
        case FaultKind::KillBefore:
            return "killed before";
        case FaultKind::KillAfter:
            return "killed after";
        case FaultKind::KillHalfCopy:
            return "killed half-way";
        default:
            return "no fault";
    }
}

bool isFileCall(const std::string& name) {
    return errorsOfCalls().count(name) != 0;
}

bool changesTheDisk(const std::string& name) {
    return name == "CreateDirectoryW" || name == "CopyFileW" || name == "MoveFileW" ||
           name == "DeleteFileW" || name == "RemoveDirectoryW" || name == "SetFileAttributesW" ||
           name == "_wfopen";
}

std::vector<Fault> faultsOf(const std::string& name, uint32_t call) {
    std::vector<Fault> faults;
    for (const DWORD error : errorsOfCalls().at(name))
        faults.push_back({FaultKind::Fail, call, error});
    faults.push_back({FaultKind::KillBefore, call, 0});
    // A kill after a call that only reads equals a kill before it.
    if (changesTheDisk(name))
        faults.push_back({FaultKind::KillAfter, call, 0});
    if (name == "CopyFileW")
        faults.push_back({FaultKind::KillHalfCopy, call, 0});
    return faults;
}

DWORD applyFault(const Fault& fault, const HookedCall& call) {
    if (fault.kind == FaultKind::Fail)
        return fault.error;
    const FaultKind kind = fault.kind;
    setCallHook({});
    if (kind == FaultKind::KillHalfCopy)
        copyHalf(call);
    if (kind == FaultKind::KillAfter)
        make(call);
    die();
}
