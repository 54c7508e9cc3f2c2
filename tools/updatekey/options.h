// Adds options of the command line whose values are converted or checked.
#pragma once

#include <CLI/CLI.hpp>
#include <exception>
#include <string>

// Adds an option whose text is converted by `parse`. An exception of `parse` is a usage error.
template <class Parse>
CLI::Option* addParsed(CLI::App* command, const std::string& name, const std::string& type,
                       const std::string& description, Parse parse) {
    return command
        ->add_option_function<std::string>(
            name,
            [name, parse](const std::string& text) {
                try {
                    parse(text);
                } catch (const std::exception& error) {
                    throw CLI::ValidationError(name, error.what());
                }
            },
            description)
        ->type_name(type);
}

// Adds an option whose value is checked, and shows a simple type name in the help.
template <class Value>
CLI::Option* addChecked(CLI::App* command, const std::string& name, Value& value,
                        const std::string& text, CLI::Validator check, const char* kind) {
    return command->add_option(name, value, text)->check(check.description(""))->type_name(kind);
}

// Adds an option for a folder that must exist.
template <class Value>
CLI::Option* addFolder(CLI::App* command, const std::string& name, Value& value,
                       const std::string& text) {
    return addChecked(command, name, value, text, CLI::ExistingDirectory, "DIR");
}
