// A fault at one call of an update, and the hook that brings it about.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/posix/call_hook.h"
#include "tests/faults/disk_image.h"

enum class FaultKind {
    None,
    Fail,          // the call fails with an error number
    KillBefore,    // the process dies right before the call
    KillAfter,     // right after it
    KillHalfCopy,  // with half of the bytes copied
    PowerCut,      // right before the call
};

struct Fault {
    FaultKind kind = FaultKind::None;
    uint32_t call = 0;  // counted from 1
    DWORD error = 0;
    Unflushed unflushed = Unflushed::Kept;  // by a power cut

    std::string text() const;
};

// Whether a call of this name is one of the file calls, which are counted. The start of the
// application, which an update ends with, is counted too.
bool isFileCall(const std::string& name);

// Whether a call of this name can change the disk (a file open may).
bool changesTheDisk(const std::string& name);

// The faults that can strike a call of this name at place `call`.
std::vector<Fault> faultsOf(const std::string& name, uint32_t call);

// Strikes the file call that `call` describes with `fault`: returns the error number with which it
// is to fail, or does not return.
DWORD strike(const Fault& fault, const HookedCall& call);
