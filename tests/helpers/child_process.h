// A process started for a test. The destructor ends it.
#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "tools/host/process.h"

// The timeout of every wait, long enough for a slow machine.
constexpr std::chrono::seconds PATIENCE{240};

// Polls until the condition holds; false on timeout.
bool waitUntil(const std::function<bool()>& condition);

class ChildProcess {
  public:
    using Variables = std::map<std::string, std::string>;

    // Starts a program with this process's environment and the given variables; an empty value
    // unsets one. Its standard output and standard error are recorded.
    explicit ChildProcess(const std::vector<std::string>& command, const Variables& variables = {});
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    ~ChildProcess();

    pid_t id() const { return static_cast<pid_t>(process_.id()); }
    bool isRunning() { return !process_.hasEnded(); }

    // Waits until the process exits. Returns its exit code, or nothing on timeout or when it was
    // killed.
    std::optional<int> waitForEnd();

    // The output so far: standard output, and standard error.
    std::string output() const;
    std::string errors() const;

  private:
    std::string folder_;
    Process process_;
};
