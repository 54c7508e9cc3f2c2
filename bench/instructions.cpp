// The program that scripts/lib/check-instructions measures: frames of the screen and steps of the
// engine.

#include "bench/instructions.h"

#include <valgrind/callgrind.h>

#include <cstdio>

#include "bench/counted_heap.h"

void countInstructions(const std::string& name, const std::function<uint64_t()>& work) {
    const uint64_t before = heapCount().allocations;
    CALLGRIND_ZERO_STATS;
    const uint64_t units = work();
    CALLGRIND_DUMP_STATS_AT(name.c_str());
    std::printf("%s\t%llu\t%llu\n", name.c_str(), static_cast<unsigned long long>(units),
                static_cast<unsigned long long>(heapCount().allocations - before));
}

int main() {
    countScreen();
    countEngine();
}
