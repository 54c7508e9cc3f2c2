// Starts other programs of this computer.
#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <vector>

struct Command {
    std::vector<std::string> words;  // the program, which is searched for along PATH, and arguments
    std::map<std::string, std::string> variables = {};  // an empty value removes a variable
    std::filesystem::path input = {};                   // empty: there is nothing to read
    std::filesystem::path output = {};                  // empty: it is not kept
    std::filesystem::path errors = {};                  // empty: they are part of the output
};

// A program and the programs that it starts. They end with the object, and when this program is
// interrupted.
class Process {
  public:
    // Throws std::runtime_error when the program cannot be started.
    explicit Process(const Command& command);
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;
    ~Process();

    long id() const;

    // Whether the program has ended. `exitCode` is then known.
    bool hasEnded();

    // Waits for the end of the program, and returns its exit code.
    int wait();

    // -1 when the program was ended from outside.
    int exitCode() const;

    // Asks the program and those that it has started to end.
    void askToEnd();

    // Ends them, by force if they do not end when they are asked, and waits for that.
    void end();

  private:
    struct State;
    std::unique_ptr<State> state_;
};

// Runs a program with `input` as its standard input and returns its standard output. Its locale is
// UTF-8 and its time zone UTC, so that results do not depend on this computer's settings. /usr/sbin
// and /sbin are searched too. Throws std::runtime_error, with the program's message, when it cannot
// be started or fails.
std::string outputOf(const std::vector<std::string>& words, const std::string& input = {});
