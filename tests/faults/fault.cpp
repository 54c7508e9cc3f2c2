#include "tests/faults/fault.h"

#include <csignal>
#include <fstream>
#include <map>

#include "platform/posix/files/device.h"
#include "platform/utf.h"
#include "tools/host/host_file.h"

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
        {"GetLocalTime", {}},
        {"CreateProcessW", {}},
    };
    return ERRORS;
}

void copyHalf(const HookedCall& copy) {
    const auto hostPath = [&](std::size_t argument) {
        return host::toHostPath(host::toUtf16(copy.arguments[argument]).c_str());
    };
    const std::string bytes = readHostFileIfThere(hostPath(0));
    std::ofstream(hostPath(1), std::ios::binary) << bytes.substr(0, bytes.size() / 2);
}

}  // namespace

bool isCounted(const std::string& name) {
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
        faults.push_back({Fault::Kind::Fail, call, error});
    faults.push_back({Fault::Kind::Kill, call, 0});
    if (name == "CopyFileW")
        faults.push_back({Fault::Kind::KillHalfCopy, call, 0});
    return faults;
}

std::string textOf(const Fault& fault) {
    return fault.kind == Fault::Kind::Fail   ? "fails with " + std::to_string(fault.error)
           : fault.kind == Fault::Kind::Kill ? "killed before"
                                             : "killed half-way";
}

DWORD apply(const Fault& fault, const HookedCall& call) {
    if (fault.kind == Fault::Kind::Fail)
        return fault.error;
    if (fault.kind == Fault::Kind::KillHalfCopy)
        copyHalf(call);
    std::raise(SIGKILL);
    return ERROR_SUCCESS;
}
