// A process started for a test, ended with the object at the latest.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

// Long enough for any machine: a test that waits this long has failed.
constexpr std::chrono::seconds PATIENCE{240};

// Looks again and again until `condition` holds. Returns false once patience is at its end.
bool waitUntil(const std::function<bool()>& condition);

class ChildProcess {
  public:
    using Variables = std::map<std::string, std::string>;

    // Starts a program with the given variables set beside those of this process (an empty value
    // removes one). What it prints on its standard output is kept.
    explicit ChildProcess(std::vector<std::string> command, const Variables& variables = {});
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    ~ChildProcess();

    pid_t id() const { return id_; }
    bool isRunning();

    // Waits for the end. Returns the exit code, none when it did not end or was killed.
    std::optional<int> waitForEnd();

    // All that has been printed, standard error after standard output.
    std::string output() const;
    std::string errors() const;

  private:
    std::string folder_;
    pid_t id_ = -1;
    std::optional<int> status_;
};
