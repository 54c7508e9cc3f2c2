#include "tools/guidata/tool_main.h"

#include <cstdio>
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
        const std::optional<ExitCode> end = parse(app, argc, argv);
        return end ? *end : tool.work();
    } catch (const std::exception& problem) {
        return fail(tool.name, problem.what());
    }
}

ExitCode fail(const char* tool, const std::string& message) {
    std::fprintf(stderr, "%s: %s\n", tool, message.c_str());
    return ExitFailed;
}
