// The instrument's screen.
#pragma once

#include <cstdint>

namespace instrument {

constexpr int32_t SCREEN_WIDTH = 1024;  // pixels
constexpr int32_t SCREEN_HEIGHT = 768;

}  // namespace instrument
