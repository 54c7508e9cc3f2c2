// A stopwatch, running commands, and the comparison of two ways to do the same work.
#pragma once

#include <functional>
#include <string>
#include <vector>

// Returns the seconds of a monotonic clock.
double now();

double median(std::vector<double> values);

// Runs a program until it exits. Its standard output is stored in `output`, or discarded. Returns
// the seconds it took; throws std::runtime_error when it fails.
double runCommand(const std::vector<std::string>& command, std::string* output = nullptr);

struct Comparison {
    double ours;    // seconds, median
    double theirs;  // seconds, median
    double ratio;   // median of the pairs' ratios
};

// Runs both ways `pairs` times, one right after the other and in alternating order. Each function
// returns its seconds.
Comparison compare(int pairs, const std::function<double()>& ours,
                   const std::function<double()>& theirs);

// Prints a row of the table with tabs between the fields. The last two fields are empty when
// nothing is compared.
void printRow(const std::string& what, const std::string& ours, const std::string& theirs,
              const std::string& ratio, const std::string& goal);
void printRow(const std::string& what, const Comparison& comparison, const std::string& goal);

// Format a time such as "12.3 ms", and a number such as "0.97".
std::string timeText(double seconds);
std::string megabytes(double bytes);
std::string numberText(double number, int digits);
