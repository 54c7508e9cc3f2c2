// Tests whether the advice of "updatekey diagnose" repairs the instrument that a faulty run left.
#pragma once

#include "tests/faults/checks.h"

// Follows the advice on a copy of `instrument`, step by step, with its key plugged in. Adds where
// the update stopped, as the diagnosis names it, and the actions that it advises.
void followAdvice(const DeviceFolder& instrument, Remarks& remarks);
