#include "bench/measure.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>

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
    std::vector<char*> arguments;
    for (const std::string& argument : command)
        arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);

    int ends[2] = {-1, -1};
    if (::pipe2(ends, O_CLOEXEC) != 0)
        std::abort();
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    if (output != nullptr)
        ::posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    else
        ::posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);

    const double start = now();
    pid_t process = 0;
    const int failure =
        ::posix_spawnp(&process, arguments[0], &actions, nullptr, arguments.data(), environ);
    ::close(ends[1]);
    char buffer[4096];
    ssize_t got = 0;
    while (failure == 0 && (got = ::read(ends[0], buffer, sizeof buffer)) > 0) {
        if (output != nullptr)
            output->append(buffer, static_cast<std::size_t>(got));
    }
    int status = -1;
    if (failure == 0)
        ::waitpid(process, &status, 0);
    const double seconds = now() - start;

    ::close(ends[0]);
    ::posix_spawn_file_actions_destroy(&actions);
    if (status != 0) {
        std::fprintf(stderr, "%s failed\n", command[0].c_str());
        std::exit(1);
    }
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

std::string timeText(double seconds) {
    if (seconds >= 1)
        return numberText(seconds, 2) + " s";
    if (seconds >= 1e-3)
        return numberText(seconds * 1e3, 2) + " ms";
    return seconds >= 1e-6 ? numberText(seconds * 1e6, 2) + " us"
                           : numberText(seconds * 1e9, 0) + " ns";
}
