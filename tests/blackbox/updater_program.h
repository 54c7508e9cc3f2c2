// The updater as its user has it: the program on a device folder, on a screen of its own, with
// keys.
#pragma once

#include <optional>
#include <string>

#include "tests/helpers/child_process.h"
#include "tests/helpers/device_folder.h"

// An X server that nobody sees, of the instrument's screen size.
class VirtualDisplay {
  public:
    explicit VirtualDisplay(int depth = 24);

    const std::string& name() const { return name_; }

    // Presses keys by their X names, one after another, again and again until `done`: a window that
    // has just come up may not hear them yet. Returns false once patience is at its end.
    bool pressUntil(const std::string& keys, const std::function<bool()>& done) const;

  private:
    std::optional<ChildProcess> server_;
    std::string name_;
};

class UpdaterProgram {
  public:
    UpdaterProgram(const DeviceFolder& device, const VirtualDisplay& display,
                   const std::string& argument, ChildProcess::Variables variables = {});

    // Waits until its window has been set up, when the log is there.
    bool waitForScreen();

    ChildProcess& process() { return *process_; }

  private:
    const DeviceFolder& device_;
    std::optional<ChildProcess> process_;
};
