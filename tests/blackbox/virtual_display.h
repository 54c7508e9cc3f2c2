// A virtual X server with the instrument's screen size, and access to keys and the close button.
#pragma once

#include <optional>
#include <string>

#include "tests/helpers/child_process.h"

class VirtualDisplay {
  public:
    VirtualDisplay();

    const std::string& name() const { return name_; }

    // Presses the keys, given by their X names, repeatedly until `done` holds, because a new window
    // may miss the first ones. Returns false on timeout.
    bool pressUntil(const std::string& keys, const std::function<bool()>& done) const;

    // Asks the only window to close, as a window manager does for its close button. Returns its
    // size, such as "1024x768"; nothing when there is no window.
    std::string closeWindow() const;

  private:
    std::optional<ChildProcess> server_;
    std::string name_;
};
