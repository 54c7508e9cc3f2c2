// The matrix's table and its detail file.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "tests/faults/fault_case.h"

struct MatrixRow {
    NamedState state;
    std::vector<std::string> calls;
    std::vector<FaultCase> cases;
    const CaseResult* results;  // one a case
};

// Prints the table. Returns how many cases broke an invariant without a weakness to explain it.
std::size_t printTable(const std::vector<MatrixRow>& rows);

// Writes one line a case: state, call, fault, key of the later run, ends of the runs, findings.
void writeDetails(const std::vector<MatrixRow>& rows, std::ostream& file);
