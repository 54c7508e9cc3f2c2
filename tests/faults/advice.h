// Whether what "updatekey diagnose" advises cures the instrument that a struck run left.
#pragma once

#include <array>

#include "tests/helpers/device_folder.h"
#include "tools/diagnosis/diagnosis.h"

constexpr std::size_t ACTION_COUNT = 5;

struct AdviceOutcome {
    UpdateStep step = UpdateStep::None;
    std::array<bool, ACTION_COUNT> actions{};  // those that were advised, by Advice::Action
    bool cured = false;  // afterwards exactly the files of the key that is plugged in are in place
};

// Follows the advice on a copy of `instrument`, step by step, with its key plugged in.
AdviceOutcome followAdvice(const DeviceFolder& instrument);
