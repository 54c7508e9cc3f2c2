// How the tools begin and end.
#pragma once

#include <CLI/CLI.hpp>
#include <cstdio>
#include <optional>
#include <string>

enum ExitCode : int {
    EXIT_CODE_DONE = 0,
    EXIT_CODE_FAILED = 1,  // an input that cannot be used or an output that cannot be written
    EXIT_CODE_USAGE = 2,   // a command line that makes no sense
};

// Reads the command line into what the options of `app` stand for. Gives the exit code when there
// is nothing more to do: help was asked for and printed, or a mistake was reported.
inline std::optional<ExitCode> parseCommandLine(CLI::App& app, int argc, char** argv) {
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& problem) {
        return app.exit(problem) == 0 ? EXIT_CODE_DONE : EXIT_CODE_USAGE;
    }
    return std::nullopt;
}

// Reports `message` on standard error, and is the exit code that goes with it.
inline ExitCode fail(const char* tool, const char* message) {
    std::fprintf(stderr, "%s: %s\n", tool, message);
    return EXIT_CODE_FAILED;
}

inline ExitCode fail(const char* tool, const std::string& message) {
    return fail(tool, message.c_str());
}
