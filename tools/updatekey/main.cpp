// The program updatekey: parses the command line, runs the command and reports failures.

#include <algorithm>
#include <cstdio>
#include <exception>
#include <string>

#include "tools/host/interrupt.h"
#include "tools/host/terminal.h"
#include "tools/updatekey/commands.h"
#include "tools/updatekey/report/report.h"

namespace {

using Words = std::vector<std::string>;

int fail(bool json, const std::string& message) {
    std::fprintf(stderr, "updatekey: %s\n", message.c_str());
    if (json)
        writeOut(failureJson(message));
    return ExitFailure;
}

// Returns the first word that is not an option, unless it is the name of a command.
std::string unknownCommand(const CLI::App& app, const Words& words) {
    const auto word = std::find_if(words.begin(), words.end(),
                                   [](const std::string& w) { return w.rfind('-', 0) != 0; });
    if (word == words.end())
        return {};
    const auto named = [&](const CLI::App* command) { return command->get_name() == *word; };
    const std::vector<const CLI::App*> commands = app.get_subcommands({});
    return std::any_of(commands.begin(), commands.end(), named) ? std::string() : *word;
}

// Returns the first word that looks like an option and is none of the program or of the command.
std::string unknownOption(const CLI::App& app, const Words& words) {
    std::vector<const CLI::App*> places = app.get_subcommands({});
    places.push_back(&app);
    const auto known = [&](const std::string& word) {
        return std::any_of(places.begin(), places.end(), [&](const CLI::App* place) {
            return place->get_option_no_throw(word.substr(0, word.find('='))) != nullptr;
        });
    };
    const auto unknown = std::find_if(words.begin(), words.end(), [&](const std::string& word) {
        return word.rfind("--", 0) == 0 && word.size() > 2 && !known(word);
    });
    return unknown == words.end() ? std::string() : *unknown;
}

int run(const Words& words, bool json) {
    Arguments arguments;
    CLI::App app(
        "Makes, checks, rehearses and writes update keys of the Kestrel instrument, and diagnoses "
        "instruments after an update.",
        "updatekey");
    describeCommands(app, arguments);
    try {
        app.parse(Words(words.rbegin(), words.rend()));
    } catch (const CLI::Success& help) {
        return app.exit(help);
    } catch (const CLI::ParseError& error) {
        const std::string command = unknownCommand(app, words);
        const std::string option = unknownOption(app, words);
        const std::string fault = !option.empty()    ? option + " is not an option"
                                  : !command.empty() ? command + " is not a command"
                                                     : error.what();
        return fail(json, fault + "; updatekey --help explains the usage");
    }
    return runCommand(app, arguments);
}

}  // namespace

int main(int argc, char** argv) {
    watchForInterrupts();
    const Words words = commandLine(argc, argv);
    const bool json = std::find(words.begin(), words.end(), "--json") != words.end();
    try {
        return run(words, json);
    } catch (const std::exception& error) {
        try {
            return fail(json, error.what());
        } catch (const std::exception&) {
            return ExitFailure;
        }
    }
}
