// The updater, running on a folder as its device.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

class DeviceProgram {
  public:
    // Starts the update. `scratch` is a folder for files of the run. With `hidden`, and without a
    // display, the updater draws on a virtual screen. Throws std::runtime_error on failure.
    DeviceProgram(const std::filesystem::path& updater, const std::filesystem::path& device,
                  const std::filesystem::path& scratch, bool hidden);
    // Ends the updater and the application.
    ~DeviceProgram();

    bool hasEnded();

    // The updater's exit code once it has ended; -1 when it was ended from outside.
    int exitCode() const;

    void askToEnd();

    // Ends the application that the updater has started. Returns whether it was running.
    bool endApplication();

    // What the updater wrote to the standard output and error.
    std::string output() const;

    // The number of frames that it drew; -1 when they were not counted.
    long frames() const;

    // Returns the updater that belongs to this program; an empty path when there is none.
    static std::filesystem::path updater();

    // Whether this computer can start the application: a native program or a script. A real
    // instrument's application is neither.
    static bool startsHere(const std::filesystem::path& application);

  private:
    struct State;
    std::unique_ptr<State> state_;
};
