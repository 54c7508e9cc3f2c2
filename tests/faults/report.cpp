#include "tests/faults/report.h"

#include <cstdio>
#include <functional>

namespace {

using Predicate = std::function<bool(const CaseResult&)>;

std::size_t countIn(const MatrixRow& row, const Predicate& holds) {
    std::size_t count = 0;
    for (std::size_t i = 0; i < row.cases.size(); ++i)
        count += holds(row.results[i]) ? 1U : 0U;
    return count;
}

std::size_t countIn(const std::vector<MatrixRow>& rows, const Predicate& holds) {
    std::size_t count = 0;
    for (const MatrixRow& row : rows)
        count += countIn(row, holds);
    return count;
}

struct Column {
    const char* title;
    Predicate holds;
};

const std::vector<Column>& outcomes() {
    static const std::vector<Column> COLUMNS = {
        {"complete", [](const CaseResult& r) { return r.first == RunEnd::Complete; }},
        {"unnoticed", [](const CaseResult& r) { return r.unnoticed; }},
        {"failed", [](const CaseResult& r) { return r.first == RunEnd::Failed; }},
        {"killed", [](const CaseResult& r) { return r.first == RunEnd::Killed; }},
        {"mixed", [](const CaseResult& r) { return r.mixed; }},
        {"no app", [](const CaseResult& r) { return r.noApplication; }},
        {"kept", [](const CaseResult& r) { return r.kept; }},
        {"healed",
         [](const CaseResult& r) {
             return r.second == RunEnd::Complete &&
                    r.violations[static_cast<std::size_t>(Invariant::LaterRunSucceeds)] == 0;
         }},
        {"2nd failed", [](const CaseResult& r) { return r.second != RunEnd::Complete; }},
    };
    return COLUMNS;
}

void printOutcomes(const std::vector<MatrixRow>& rows) {
    std::printf("%-17s %6s %7s", "start", "calls", "cases");
    for (const Column& column : outcomes())
        std::printf(" %10s", column.title);
    std::printf("\n");
    std::size_t cases = 0;
    for (const MatrixRow& row : rows) {
        std::printf("%-17s %6zu %7zu", row.state.name, row.calls.size(), row.cases.size());
        for (const Column& column : outcomes())
            std::printf(" %10zu", countIn(row, column.holds));
        std::printf("\n");
        cases += row.cases.size();
    }
    std::printf("%-17s %6s %7zu", "all", "", cases);
    for (const Column& column : outcomes())
        std::printf(" %10zu", countIn(rows, column.holds));
    std::printf("\n");
}

const char* const INVARIANT_TEXTS[INVARIANT_COUNT] = {
    "I1 nothing lost", "I2 a later run succeeds", "I3 the log tells the truth",
    "I4 nothing else touched", "I5 always a way out"};

// Prints where the update stopped, as "updatekey diagnose" names it, and whether its advice helped.
void printAdvice(const std::vector<MatrixRow>& rows) {
    std::printf("\n%-20s %7s %7s %7s %7s %7s %12s %7s %12s\n", "diagnosis", "cases", "cured",
                "save", "remove", "rename", "update-again", "start", "check-disk");
    for (std::size_t i = 0; i <= static_cast<std::size_t>(UpdateStep::Unclear); ++i) {
        const auto step = static_cast<UpdateStep>(i);
        const auto count = [&](const Predicate& holds) {
            return countIn(rows,
                           [&](const CaseResult& r) { return r.advice.step == step && holds(r); });
        };
        std::printf("%-20s %7zu %7zu", textOf(step).name,
                    count([](const CaseResult&) { return true; }),
                    count([](const CaseResult& r) { return r.advice.cured; }));
        for (const auto& [action, width] :
             {std::pair(0U, 7), {1U, 7}, {2U, 7}, {3U, 12}, {4U, 7}, {5U, 12}})
            std::printf(" %*zu", width, count([action = action](const CaseResult& r) {
                            return r.advice.actions[action];
                        }));
        std::printf("\n");
    }
}

}  // namespace

std::size_t printTable(const std::vector<MatrixRow>& rows) {
    printOutcomes(rows);
    std::printf("\n%-28s %11s %12s\n", "invariant", "violations", "unexplained");
    for (std::size_t i = 0; i < INVARIANT_COUNT; ++i) {
        std::printf("%-28s %11zu %12zu\n", INVARIANT_TEXTS[i],
                    countIn(rows, [i](const CaseResult& r) { return r.violations[i] != 0; }),
                    countIn(rows, [i](const CaseResult& r) { return r.unexplained[i] != 0; }));
    }
    std::printf("\n%-28s %11s\n", "known weakness", "cases");
    for (std::size_t w = 0; w < WEAKNESS_COUNT; ++w) {
        std::printf("%-28s %11zu\n", nameOf(static_cast<Weakness>(w)),
                    countIn(rows, [w](const CaseResult& r) { return r.weaknesses[w]; }));
    }
    printAdvice(rows);
    return countIn(rows, [](const CaseResult& r) {
        bool bad = !r.done || !r.advice.cured || !r.advice.agrees;
        for (const unsigned char unexplained : r.unexplained)
            bad |= unexplained != 0;
        return bad;
    });
}

void writeDetails(const std::vector<MatrixRow>& rows, std::ostream& file) {
    for (const MatrixRow& row : rows) {
        for (std::size_t i = 0; i < row.cases.size(); ++i) {
            const FaultCase& faultCase = row.cases[i];
            const CaseResult& result = row.results[i];
            file << row.state.name << "; call " << faultCase.fault.call << " "
                 << row.calls[faultCase.fault.call - 1] << " " << faultCase.fault.text()
                 << "; then " << (faultCase.newerKeyLater ? "a newer key" : "the same key") << "; "
                 << nameOf(result.first) << (result.unnoticed ? " unnoticed" : "")
                 << (result.mixed ? " mixed" : "") << (result.noApplication ? " no-app" : "")
                 << ", " << nameOf(result.second) << "; " << textOf(result.advice.step).name
                 << (result.advice.cured ? "" : ", NOT CURED")
                 << (result.advice.agrees ? "" : ", DIAGNOSIS WRONG") << result.notes.data()
                 << "\n";
        }
    }
}
