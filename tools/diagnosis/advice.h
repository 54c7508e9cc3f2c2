// Advises how to repair an instrument.
#pragma once

#include "tools/diagnosis/diagnosis.h"

// Completes a diagnosis whose other fields are known: adds the steps of the repair, and marks the
// folders that are the only copy of their files.
void advise(Diagnosis& diagnosis, const DiskState& state);
