// A fault at one call of an update, and the hook that causes it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/posix/call_hook.h"

enum class FaultKind {
    None,
    Fail,          // the call fails with an error number
    KillBefore,    // the process dies right before the call
    KillAfter,     // right after it
    KillHalfCopy,  // when half of the bytes are copied
};

struct Fault {
    FaultKind kind = FaultKind::None;
    uint32_t call = 0;  // counted from 1
    DWORD error = 0;

    std::string text() const;
};

// Whether a call of this name is a file call or the final start of the application; only those are
// counted.
bool isFileCall(const std::string& name);

// Whether a call of this name can change the disk (a file open may).
bool changesTheDisk(const std::string& name);

// Returns the faults that apply to a call of this name at position `call`.
std::vector<Fault> faultsOf(const std::string& name, uint32_t call);

// Applies `fault` to the file call `call`: returns the error number with which the call must fail,
// or kills the process.
DWORD applyFault(const Fault& fault, const HookedCall& call);
