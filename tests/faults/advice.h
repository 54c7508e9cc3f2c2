// Tests whether the advice of "updatekey diagnose" repairs the instrument that a faulty run left.
#pragma once

#include <array>

#include "tests/helpers/device_folder.h"
#include "tools/diagnosis/diagnosis.h"

constexpr std::size_t ACTION_COUNT = 6;

struct AdviceOutcome {
    UpdateStep step = UpdateStep::None;
    std::array<bool, ACTION_COUNT> actions{};  // the actions advised, by Advice::Action
    bool agrees = false;  // the folders and the changes it names are those on the disk
    bool cured = false;   // exactly the plugged-in key's files are installed afterwards
};

// Follows the advice on a copy of `instrument`, step by step, with its key plugged in.
AdviceOutcome followAdvice(const DeviceFolder& instrument);
