// The most that is read of each kind of file that an update key, the GUI data or the registry
// provides. No file of an instrument comes near its limit; a damaged or hostile one can neither
// fill the memory nor hold up the screen. All limits are in bytes.
#pragma once

#include <cstddef>

namespace limits {

constexpr std::size_t KILOBYTE = std::size_t{1} << 10;
constexpr std::size_t MEGABYTE = std::size_t{1} << 20;

// The exported registry of a whole instrument has a few megabytes.
constexpr std::size_t REGISTRY = 16 * MEGABYTE;

}  // namespace limits
