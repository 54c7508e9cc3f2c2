#include "bench/measure.h"

#include <algorithm>
#include <cstdio>
#include <ctime>

#include "tools/host/process.h"

double now() {
    timespec time{};
    ::clock_gettime(CLOCK_MONOTONIC, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 != 0 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

double runCommand(const std::vector<std::string>& command, std::string* output) {
    const double start = now();
    const std::string printed = outputOf(command);
    const double seconds = now() - start;
    if (output != nullptr)
        *output = printed;
    return seconds;
}

Comparison compare(int pairs, const std::function<double()>& ours,
                   const std::function<double()>& theirs) {
    std::vector<double> first;
    std::vector<double> second;
    std::vector<double> ratios;
    for (int i = 0; i < pairs; ++i) {
        if (i % 2 == 0)
            first.push_back(ours());
        second.push_back(theirs());
        if (i % 2 != 0)
            first.push_back(ours());
        ratios.push_back(first.back() / second.back());
    }
    return {median(first), median(second), median(ratios)};
}

void printRow(const std::string& what, const std::string& ours, const std::string& theirs,
              const std::string& ratio, const std::string& goal) {
    std::printf("%s\t%s\t%s\t%s\t%s\n", what.c_str(), ours.c_str(), theirs.c_str(), ratio.c_str(),
                goal.c_str());
    std::fflush(stdout);
}

void printRow(const std::string& what, const Comparison& comparison, const std::string& goal) {
    printRow(what, timeText(comparison.ours), timeText(comparison.theirs),
             numberText(comparison.ratio, 2), goal);
}

std::string numberText(double number, int digits) {
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", digits, number);
    return text;
}

std::string megabytes(double bytes) {
    return numberText(bytes / (1 << 20), 2) + " MiB";
}

std::string timeText(double seconds) {
    if (seconds >= 1)
        return numberText(seconds, 2) + " s";
    if (seconds >= 1e-3)
        return numberText(seconds * 1e3, 2) + " ms";
    return seconds >= 1e-6 ? numberText(seconds * 1e6, 2) + " us"
                           : numberText(seconds * 1e9, 0) + " ns";
}
