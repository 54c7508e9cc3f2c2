// Counts heap allocations made with "new", by replacing the operators.
#pragma once

#include <cstdint>

struct HeapCount {
    uint64_t allocations;
    uint64_t bytesInUse;
    uint64_t peakBytes;
};

// Returns the allocations since the process started.
HeapCount heapCount();

// Returns the peak of the process's resident memory in bytes; 0 when the system does not report it.
uint64_t peakResidentBytes();
