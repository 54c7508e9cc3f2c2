// Completion of a program's command line for the shells.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

// The script that makes `shell` ("bash", "zsh" or "fish") complete the commands and options that
// `app` describes. Throws std::runtime_error for another shell.
std::string completionScript(const CLI::App& app, const std::string& shell);
