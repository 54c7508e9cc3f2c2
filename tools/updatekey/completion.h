// Shell completion for a command line.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

// Returns a script that makes `shell` ("bash", "zsh" or "fish") complete the commands and options
// of `app`. Throws std::runtime_error for another shell.
std::string completionScript(const CLI::App& app, const std::string& shell);
