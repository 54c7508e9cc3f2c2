// A fault at one call of an update, and the hook that causes it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/posix/call_hook.h"

struct Fault {
    enum class Kind {
        None,
        Fail,          // the call fails with an error number
        Kill,          // the process dies right before the call
        KillHalfCopy,  // when half of the bytes are copied
    };

    Kind kind = Kind::None;
    uint32_t call = 0;  // counted from 1
    DWORD error = 0;
};

// Whether a call of this name is counted: those that use files, the last call before the log tells
// the result, and the start of the application.
bool isCounted(const std::string& name);

// Whether a call of this name can change the disk (the opening of a file may).
bool changesTheDisk(const std::string& name);

// Returns the faults that apply to a call of this name at position `call`.
std::vector<Fault> faultsOf(const std::string& name, uint32_t call);

std::string textOf(const Fault& fault);

// Returns the error number with which the call must fail, or kills the process.
DWORD apply(const Fault& fault, const HookedCall& call);
