#include "tools/updatekey/completion.h"

#include <stdexcept>
#include <vector>

namespace {

struct Word {
    std::string name;  // including the dashes
    std::string description;
    std::string takes;  // "dir", "file", "text", or empty
};

// Returns what the value of an option is: "dir", "file", "text", or nothing for a flag.
std::string kindOf(const CLI::Option& option) {
    const std::string type = option.get_type_name();
    if (option.get_items_expected_max() == 0)
        return {};
    if (type.find("DIR") != std::string::npos)
        return "dir";
    return type.find("FILE") != std::string::npos || type.find("PATH") != std::string::npos
               ? "file"
               : "text";
}

std::vector<Word> optionsOf(const CLI::App& command) {
    std::vector<Word> words;
    for (const CLI::Option* option : command.get_options())
        if (!option->nonpositional())
            continue;
        else
            for (const std::string& name : option->get_lnames())
                words.push_back({"--" + name, option->get_description(), kindOf(*option)});
    return words;
}

std::vector<const CLI::App*> commandsOf(const CLI::App& app) {
    return app.get_subcommands(
        [](const CLI::App* command) { return !command->get_group().empty(); });
}

// Quotes a text for the shell with single quotes.
std::string shellQuoted(const std::string& text) {
    std::string result = "'";
    for (const char c : text)
        result += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return result + "'";
}

std::string names(const std::vector<Word>& words, const std::string& takes = "*") {
    std::string list;
    for (const Word& word : words)
        if (takes == "*" || word.takes == takes)
            list += (list.empty() ? "" : " ") + word.name;
    return list;
}

std::string bashScript(const CLI::App& app) {
    const std::string& program = app.get_name();
    std::string commands;
    std::string cases;
    std::string folders;
    std::string files;
    for (const CLI::App* command : commandsOf(app)) {
        commands += (commands.empty() ? "" : " ") + command->get_name();
        const std::vector<Word> words = optionsOf(*command);
        cases +=
            "        " + command->get_name() + ") options=" + shellQuoted(names(words)) + " ;;\n";
        folders += " " + names(words, "dir");
        files += " " + names(words, "file");
    }
    return "# Completion of " + program + " for bash.\n_" + program + "() {\n" +
           "    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD-1]}\n"
           "    local command='' word options=''\n"
           "    for word in \"${COMP_WORDS[@]:1:COMP_CWORD-1}\"; do\n"
           "        case \" " +
           commands +
           " \" in *\" $word \"*) command=$word; break ;; esac\n"
           "    done\n"
           "    compopt -o filenames 2>/dev/null\n"
           "    case \"" +
           folders +
           " \" in *\" $previous \"*)\n"
           "        mapfile -t COMPREPLY < <(compgen -d -- \"$current\"); return ;; esac\n"
           "    case \"" +
           files +
           " \" in *\" $previous \"*)\n"
           "        mapfile -t COMPREPLY < <(compgen -f -- \"$current\"); return ;; esac\n"
           "    case $command in\n"
           "        '') options=" +
           shellQuoted(commands + " " + names(optionsOf(app))) + " ;;\n" + cases +
           "    esac\n"
           "    if [[ -z $command || $current == -* ]]; then\n"
           "        mapfile -t COMPREPLY < <(compgen -W \"$options\" -- \"$current\")\n"
           "    else\n"
           "        mapfile -t COMPREPLY < <(compgen -f -- \"$current\")\n"
           "    fi\n"
           "}\ncomplete -F _" +
           program + " " + program + "\n";
}

std::string zshSpecification(const Word& word) {
    std::string text = word.name;
    std::string description = word.description;
    for (const char* const special : {"[", "]", ":"})
        for (std::size_t at = 0; (at = description.find(special, at)) != std::string::npos; at += 2)
            description.insert(at, "\\");
    text += "[" + description + "]";
    if (!word.takes.empty())
        text += word.takes == "dir"    ? ":folder:_files -/"
                : word.takes == "file" ? ":file:_files"
                                       : ":value:";
    return shellQuoted(text);
}

std::string zshScript(const CLI::App& app) {
    const std::string& program = app.get_name();
    std::string commands;
    std::string cases;
    for (const CLI::App* command : commandsOf(app)) {
        commands +=
            "        " + shellQuoted(command->get_name() + ":" + command->get_description()) + "\n";
        cases += "        " + command->get_name() + ") _arguments";
        for (const Word& word : optionsOf(*command))
            cases += " \\\n            " + zshSpecification(word);
        cases += " \\\n            '*:file:_files' ;;\n";
    }
    std::string globals;
    for (const Word& word : optionsOf(app))
        globals += " \\\n        " + zshSpecification(word);
    return "#compdef " + program + "\n_" + program +
           "() {\n    local -a commands\n    commands=(\n" + commands +
           "    )\n    local line state\n    _arguments -C" + globals +
           " \\\n        '1:command:->command' '*::argument:->argument'\n"
           "    case $state in command) _describe command commands ;; esac\n"
           "    case $line[1] in\n" +
           cases + "    esac\n}\n_" + program + " \"$@\"\n";
}

std::string fishScript(const CLI::App& app) {
    const std::string start = "complete -c " + app.get_name();
    std::string script;
    const auto addOptions = [&](const CLI::App& command, const std::string& condition) {
        for (const Word& word : optionsOf(command)) {
            script += start + condition + " -l " + word.name.substr(2) + " -d " +
                      shellQuoted(word.description);
            if (word.takes == "dir")
                script += " -x -a '(__fish_complete_directories)'";
            else if (word.takes == "file")
                script += " -r -F";
            else if (word.takes == "text")
                script += " -x";
            script += "\n";
        }
    };
    addOptions(app, "");
    for (const CLI::App* command : commandsOf(app)) {
        script += start + " -n __fish_use_subcommand -a " + command->get_name() + " -d " +
                  shellQuoted(command->get_description()) + "\n";
        addOptions(*command, " -n '__fish_seen_subcommand_from " + command->get_name() + "'");
    }
    return script;
}

}  // namespace

std::string completionScript(const CLI::App& app, const std::string& shell) {
    if (shell == "bash")
        return bashScript(app);
    if (shell == "zsh")
        return zshScript(app);
    if (shell == "fish")
        return fishScript(app);
    throw std::runtime_error("there is no completion for " + shell +
                             ", only for bash, zsh and fish");
}
