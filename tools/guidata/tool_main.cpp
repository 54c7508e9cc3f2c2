#include "tools/guidata/tool_main.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <optional>

namespace {

// Returns an exit code when the tool has nothing more to do.
std::optional<ExitCode> parse(CLI::App& app, int argc, char** argv) {
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& problem) {
        return app.exit(problem) == 0 ? ExitDone : ExitUsage;
    }
    return std::nullopt;
}

}  // namespace

int runTool(const Tool& tool, int argc, char** argv) {
    try {
        CLI::App app(tool.description, tool.name);
        app.set_version_flag("--version", std::string(tool.name) + " " + TOOLS_VERSION);
        tool.addOptions(app);
        app.footer(
            "Exit codes: 0 success, warnings included; 1 an input cannot be used or the output "
            "cannot be written; 2 wrong usage.");
        const std::optional<ExitCode> end = parse(app, argc, argv);
        return end ? *end : tool.work();
    } catch (const std::exception& problem) {
        return fail(tool.name, problem.what());
    }
}

CLI::Option* limit(CLI::Option* option, int least, int most) {
    const std::string range = "from " + std::to_string(least) + " to " + std::to_string(most);
    const auto problemOf = [least, most, range](const std::string& text) {
        const double number = std::strtod(text.c_str(), nullptr);
        const bool inRange = number >= least && number <= most;
        return inRange ? std::string() : text + " is not a number " + range;
    };
    option->description(option->get_description() + ", " + range);
    return option->check(problemOf)->type_name("NUMBER");
}

ExitCode fail(const char* tool, const std::string& message) {
    std::fprintf(stderr, "%s: %s\n", tool, message.c_str());
    return ExitFailed;
}
