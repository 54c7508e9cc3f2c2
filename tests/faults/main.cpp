// The fault matrix: makes every file call of a whole update fail in every way that applies to it,
// from several starting states. Checks the device afterwards, and that a later update repairs it.
//
// Usage: fault_matrix [DETAIL-FILE [WORKERS [STEP]]]; with STEP, only every STEPth case runs.
// Writes one line for each case, and prints how many cases have what is found in any. Exits with 1
// when something is wrong in a case.

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <map>

#include "tests/faults/fault_case.h"

namespace {

std::vector<FaultCase> casesOf(const std::string& start) {
    const DeviceFolder device;
    makeDevice(device, start);
    const std::vector<std::string> calls = runUpdate(device, {}, start == "locked").calls;
    std::vector<FaultCase> cases;
    for (uint32_t call = 1; call <= calls.size(); ++call)
        for (const Fault& fault : faultsOf(calls[call - 1], call))
            for (const bool newerKeyLater : {false, true})
                // The later run's key makes a difference only when the staging folder was left in
                // another state.
                if (!newerKeyLater || fault.kind != Fault::Kind::Fail ||
                    changesTheDisk(calls[call - 1]))
                    cases.push_back({start, calls[call - 1], fault, newerKeyLater});
    return cases;
}

std::string lineOf(const FaultCase& faultCase) {
    std::string line = faultCase.start + "; call " + std::to_string(faultCase.fault.call) + " " +
                       faultCase.call + " " + textOf(faultCase.fault) + ", then " +
                       (faultCase.newerKeyLater ? "a newer key" : "the same key");
    for (const std::string& remark : runCase(faultCase))
        line += "; " + remark;
    return line;
}

// Worker w runs cases w, w + workers, and so on. Each line is written with one call, so that those
// of two workers do not mix.
void runAll(const std::vector<FaultCase>& cases, const std::string& details, std::size_t workers) {
    std::ofstream(details).close();
    std::fflush(nullptr);
    for (std::size_t worker = 0; worker < workers; ++worker)
        if (::fork() == 0) {
            for (std::size_t i = worker; i < cases.size(); i += workers)
                std::ofstream(details, std::ios::app) << lineOf(cases[i]) + "\n";
            ::_exit(0);
        }
    while (::wait(nullptr) > 0) {
    }
}

// For each remark the number of cases by starting state.
using Table = std::map<std::string, std::map<std::string, std::size_t>>;

void print(const Table& table) {
    std::printf("%-48s", "cases");
    for (const std::string& start : START_STATES)
        std::printf(" %9s", start.c_str());
    std::printf(" %9s\n", "all");
    for (const auto& [remark, counts] : table) {
        std::size_t sum = 0;
        std::printf("%-48s", remark.c_str());
        for (const std::string& start : START_STATES) {
            const std::size_t count = counts.count(start) != 0 ? counts.at(start) : 0;
            std::printf(" %9zu", count);
            sum += count;
        }
        std::printf(" %9zu\n", sum);
    }
}

}  // namespace

int main(int argc, char** argv) {
    const std::string details = argc > 1 ? argv[1] : "fault-matrix.txt";
    const std::size_t workers = argc > 2 ? std::strtoul(argv[2], nullptr, 10) : 2;
    const std::size_t step = argc > 3 ? std::strtoul(argv[3], nullptr, 10) : 1;
    if (workers == 0 || step == 0)
        return 2;

    std::vector<FaultCase> cases;
    for (const std::string& start : START_STATES) {
        const std::vector<FaultCase> all = casesOf(start);
        for (std::size_t i = 0; i < all.size(); i += step)
            cases.push_back(all[i]);
    }
    runAll(cases, details, workers);

    Table table;
    std::size_t wrong = cases.size();  // less each case whose line is there and tells nothing wrong
    std::ifstream lines(details);
    for (std::string line; std::getline(lines, line);) {
        const std::string start = line.substr(0, line.find(';'));
        wrong -= line.find(WRONG) == std::string::npos ? 1 : 0;
        std::set<std::string> remarks = {"all"};
        for (std::size_t at = line.find(';', line.find(';') + 1); at != std::string::npos;) {
            const std::size_t end = std::min(line.find(';', at + 1), line.size());
            remarks.insert(line.substr(at + 2, end - at - 2));
            at = end < line.size() ? end : std::string::npos;
        }
        for (const std::string& remark : remarks)
            ++table[remark][start];
    }
    print(table);
    std::printf("\n%zu unexplained, all cases are listed in %s\n", wrong, details.c_str());
    return wrong == 0 ? 0 : 1;
}
