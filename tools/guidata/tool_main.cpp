#include "tools/guidata/tool_main.h"

#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>
#include <map>
#include <optional>

namespace {

void limit(CLI::Option& option, const ToolOption& described) {
    if (std::holds_alternative<NotNegative>(described.limits))
        option.check(CLI::NonNegativeNumber);
    if (const OneOf* const numbers = std::get_if<OneOf>(&described.limits))
        option.check(CLI::IsMember(*numbers));
    const Between* const range = std::get_if<Between>(&described.limits);
    if (range == nullptr)
        return;
    if (std::holds_alternative<double*>(described.value))
        option.check(CLI::Range(range->least, range->most));
    else
        option.check(CLI::Range(static_cast<int>(range->least), static_cast<int>(range->most)));
}

void addOptions(CLI::App& app, const std::vector<ToolOption>& options) {
    CLI::App* alternatives = nullptr;
    std::map<std::string, CLI::Option*> added;
    for (const ToolOption& option : options) {
        CLI::App* parent = &app;
        if (option.presence == ToolOption::Alternative) {
            if (alternatives == nullptr)
                alternatives = app.add_option_group("What to do")->require_option(1);
            parent = alternatives;
        }
        CLI::Option* const adding = std::visit(
            [&](auto* value) { return parent->add_option(option.name, *value, option.help); },
            option.value);
        adding->required(option.presence == ToolOption::Required);
        if (option.showsDefault)
            adding->capture_default_str();
        limit(*adding, option);
        added[option.name] = adding;
    }
    for (const ToolOption& option : options) {
        for (const std::string& needed : option.needs)
            added.at(option.name)->needs(added.at(needed));
    }
}

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
        addOptions(app, tool.options);
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
