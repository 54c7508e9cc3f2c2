// Keys with one fault each, and what must be found in them.
#pragma once

#include <filesystem>
#include <functional>
#include <set>
#include <string>
#include <vector>

struct FaultyKey {
    std::string name;
    std::function<void(const std::filesystem::path& key)> spoil;  // what is wrong with a sound key
    std::set<std::string> findings;                               // the codes, all of them
    bool seen = true;  // whether the device takes it as a key all the same
};

std::vector<FaultyKey> faultyKeys();
