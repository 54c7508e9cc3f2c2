// Counts what the program takes from the heap by "new", by replacing its operators.
#pragma once

#include <cstdint>

struct HeapCount {
    uint64_t allocations;
    uint64_t bytesInUse;
    uint64_t peakBytes;
};

// What has been taken since the process began.
HeapCount heapCount();

// The most memory that the process has had resident, in bytes; 0 when the system does not tell.
uint64_t peakResidentBytes();
