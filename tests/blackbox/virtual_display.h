// An X server that nobody sees, of the instrument's screen size, with keys and a close button.
#pragma once

#include <optional>
#include <string>

#include "tests/helpers/child_process.h"

class VirtualDisplay {
  public:
    VirtualDisplay();

    const std::string& name() const { return name_; }

    // Presses keys by their X names, one after another, again and again until `done`: a window that
    // has just come up may not hear them yet. Returns false once patience is at its end.
    bool pressUntil(const std::string& keys, const std::function<bool()>& done) const;

    // Asks the only window to close, as a window manager does when its button is pressed. Returns
    // its size, "1024x768"; nothing when there is no window.
    std::string closeWindow() const;

  private:
    std::optional<ChildProcess> server_;
    std::string name_;
};
