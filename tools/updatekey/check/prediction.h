// Predicts what the device will do with a key, by running the update engine itself on it.
#pragma once

#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <vector>

struct Prediction {
    bool accepted = false;           // whether the device accepts the key
    int32_t state = 0;               // the engine's final state, an UpdateState
    std::string version;             // UTF-8
    std::vector<std::string> notes;  // the lines of the release notes, in Latin-1

    // Paths relative to the key, with "/"; UTF-8.
    std::set<std::string> copied;
    std::set<std::string> lost;  // the engine lists these files but cannot copy them
};

// Percentage done.
using Progress = std::function<void(int percent)>;

// Runs the engine on the current device (see TrialDevice). Each copied file is examined and deleted
// again, so that only the space of the largest file is needed.
Prediction predict(const Progress& progress);

// Looks for the key and reads its notes, but copies nothing; `state` is the state before the
// update.
Prediction lookAtKey();

// Returns the name of a state, such as "UpdateComplete".
const char* stateName(int32_t state);
