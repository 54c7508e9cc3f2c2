// A virtual X server with a screen of the instrument's size. It ends with the object.
#pragma once

#include <optional>
#include <string>

#include "tools/host/process.h"
#include "tools/host/temporary_folder.h"

class VirtualScreen {
  public:
    // Throws std::runtime_error when it cannot be started.
    VirtualScreen();

    // The value of DISPLAY for programs that are to be shown on it.
    const std::string& name() const { return name_; }

  private:
    TemporaryFolder folder_;
    std::optional<Process> server_;
    std::string name_;
};
