#include "bench/counted_heap.h"

#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <new>
#include <string>

namespace {

HeapCount count;

}  // namespace

HeapCount heapCount() {
    return count;
}

uint64_t peakResidentBytes() {
    std::ifstream status("/proc/self/status");
    uint64_t kilobytes = 0;
    for (std::string word; status >> word;)
        if (word == "VmHWM:")
            status >> kilobytes;
    return kilobytes * 1024;
}

// The library's other forms of these operators call these.
void* operator new(std::size_t size) {
    void* const block = std::malloc(size);
    if (block == nullptr)
        throw std::bad_alloc();
    ++count.allocations;
    count.bytesInUse += ::malloc_usable_size(block);
    count.peakBytes = std::max(count.peakBytes, count.bytesInUse);
    return block;
}
void operator delete(void* block) noexcept {
    count.bytesInUse -= ::malloc_usable_size(block);
    std::free(block);
}
void operator delete(void* block, std::size_t) noexcept {
    ::operator delete(block);
}
