#include "tools/guidata/tool_main.h"

#include <cstdio>
#include <cstdlib>
#include <exception>

#include "tools/host/exit_code.h"

int runTool(const Tool& tool, int argc, char** argv) {
    CLI::App app(tool.description, tool.name);
    try {
        app.set_version_flag("--version", std::string(tool.name) + " " + TOOLS_VERSION);
        tool.addOptions(app);
        app.footer("Exit codes: 0 success, warnings included; 2 wrong usage, or failure.");
        app.parse(argc, argv);
        tool.work();
        return ExitFine;
    } catch (const CLI::ParseError& problem) {
        return app.exit(problem) == 0 ? ExitFine : ExitFailure;
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "%s: %s\n", tool.name, problem.what());
        return ExitFailure;
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
