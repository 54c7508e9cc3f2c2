// The fault matrix: makes every file call of a whole update fail in every way that applies to it,
// from several starting states. Checks the device afterwards, and that a later update repairs it.
//
// Usage: fault_matrix [DETAIL-FILE [WORKERS [STEP]]]; with STEP, only every STEPth case runs. Exits
// with 1 when a violated invariant is not explained by a known weakness, or the diagnosis fails.

#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <new>

#include "tests/faults/report.h"

namespace {

CaseResult* sharedResults(std::size_t count) {
    void* memory = ::mmap(nullptr, count * sizeof(CaseResult), PROT_READ | PROT_WRITE,
                          MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED)
        std::abort();
    return new (memory) CaseResult[count];
}

std::vector<FaultCase> casesOf(StartState state, const std::vector<std::string>& calls,
                               std::size_t step) {
    std::vector<FaultCase> cases;
    for (uint32_t call = 1; call <= calls.size(); ++call) {
        for (const Fault& fault : faultsOf(calls[call - 1], call)) {
            cases.push_back({state, fault, false});
            // The later run's key makes a difference only when the staging folder was left in
            // another state.
            if (fault.kind != FaultKind::Fail || changesTheDisk(calls[call - 1]))
                cases.push_back({state, fault, true});
        }
    }
    std::vector<FaultCase> chosen;
    for (std::size_t i = 0; i < cases.size(); i += step)
        chosen.push_back(cases[i]);
    return chosen;
}

// Worker w runs cases w, w + workers, ...; true if all workers exit cleanly.
bool runAll(const std::vector<FaultCase>& cases, CaseResult* results, std::size_t workers) {
    std::fflush(nullptr);
    for (std::size_t worker = 0; worker < workers; ++worker) {
        if (::fork() == 0) {
            for (std::size_t i = worker; i < cases.size(); i += workers)
                results[i] = runCase(cases[i]);
            ::_exit(0);
        }
    }
    bool sound = true;
    for (std::size_t worker = 0; worker < workers; ++worker) {
        int status = 0;
        ::wait(&status);
        sound &= WIFEXITED(status) && WEXITSTATUS(status) == 0;
    }
    return sound;
}

}  // namespace

int main(int argc, char** argv) {
    const std::string details = argc > 1 ? argv[1] : "fault-matrix.txt";
    const std::size_t workers = argc > 2 ? std::strtoul(argv[2], nullptr, 10) : 2;
    const std::size_t step = argc > 3 ? std::strtoul(argv[3], nullptr, 10) : 1;
    const auto start = std::chrono::steady_clock::now();

    if (workers == 0 || step == 0)
        return 2;
    bool sound = true;
    std::vector<MatrixRow> rows;
    for (const NamedState& state : START_STATES) {
        MatrixRow row{state, callsOfAWholeRun(state.state), {}, nullptr};
        row.cases = casesOf(state.state, row.calls, step);
        CaseResult* results = sharedResults(row.cases.size());
        sound &= runAll(row.cases, results, workers);
        row.results = results;
        rows.push_back(row);
    }
    const std::size_t bad = printTable(rows);
    std::ofstream detailFile(details);
    writeDetails(rows, detailFile);
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
    std::printf("\n%zu unexplained, %.1f s; all cases are listed in %s\n", bad, seconds.count(),
                details.c_str());
    return sound && bad == 0 ? 0 : 1;
}
