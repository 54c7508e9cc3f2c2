// The space that files take on the flash disk.
#pragma once

#include <cstdint>

// Returns the space in bytes that a file takes: whole clusters of 4096 bytes.
constexpr uint64_t sizeOnFlash(uint64_t bytes) {
    constexpr uint64_t CLUSTER = 4096;
    return (bytes + CLUSTER - 1) / CLUSTER * CLUSTER;
}
