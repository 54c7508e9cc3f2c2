// Stop-watch, commands, and the comparison of two ways to do the same.
#pragma once

#include <functional>
#include <string>
#include <vector>

// Seconds of a clock that only goes forward.
double now();

double median(std::vector<double> values);

// Runs a program to its end, with its standard output thrown away unless `output` takes it. Returns
// the seconds that it took; ends this process when it fails.
double runCommand(const std::vector<std::string>& command, std::string* output = nullptr);

struct Comparison {
    double ours;    // seconds, median
    double theirs;  // seconds, median
    double ratio;   // median of the pairs' ratios
};

// Runs both ways `pairs` times, each pair side by side and its order turned from pair to pair. Each
// way returns its seconds.
Comparison compare(int pairs, const std::function<double()>& ours,
                   const std::function<double()>& theirs);

// Prints a line of the table: fields parted by tabs, the last two empty where nothing is compared.
void printRow(const std::string& what, const std::string& ours, const std::string& theirs,
              const std::string& ratio, const std::string& goal);
void printRow(const std::string& what, const Comparison& comparison, const std::string& goal);

// "12.3 ms" and the like; "0.97".
std::string timeText(double seconds);
std::string numberText(double number, int digits);
