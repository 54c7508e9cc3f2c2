// What the device will make of a key, found out by letting the update engine itself run on it.
#pragma once

#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <vector>

struct Prediction {
    bool seen = false;    // whether the key counts as one
    int32_t state = 0;    // the engine's state when it is done, as UpdateState numbers it
    std::string version;  // UTF-8
    std::vector<std::string> notes;  // the lines that the screen shows, one byte a character

    // Relative to the key, with "/"; UTF-8. What is lost is listed by the engine but does not
    // arrive, and the engine does not notice.
    std::set<std::string> copied;
    std::set<std::string> lost;
};

// The per cent of the work that are done.
using Progress = std::function<void(int percent)>;

// Runs the engine on the current device (see KeyDevice). A file that it has copied is looked at and
// deleted again, so that the room needed is that of the largest file.
Prediction predict(const Progress& progress);

// The engine's look at the key alone: nothing is copied, and `state` is that before the update.
Prediction lookAtKey();

// "UpdateComplete" and so on.
const char* stateName(int32_t state);

// The UTF-8 form of a narrow text of the engine.
std::string toDisplay(const std::string& narrow);
