// Prints the matrix's table and writes its detail file.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "tests/faults/fault_case.h"

struct MatrixRow {
    NamedState state;
    std::vector<std::string> calls;
    std::vector<FaultCase> cases;
    const CaseResult* results;  // one per case
};

// Prints the table. Returns the number of cases that violated an invariant without a known
// weakness, or that the advice of the diagnosis did not repair.
std::size_t printTable(const std::vector<MatrixRow>& rows);

// Writes one line per case: state, call, fault, key of the later run, ends of the runs, findings.
void writeDetails(const std::vector<MatrixRow>& rows, std::ostream& file);
