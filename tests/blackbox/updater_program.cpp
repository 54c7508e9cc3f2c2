#include "tests/blackbox/updater_program.h"

#include <fstream>
#include <sstream>

VirtualDisplay::VirtualDisplay(int depth) {
    // The server tells the number that it found free.
    server_.emplace(std::vector<std::string>{"Xvfb", "-displayfd", "1", "-screen", "0",
                                             "1024x768x" + std::to_string(depth), "-nolisten",
                                             "tcp"});
    waitUntil([this] { return server_->output().find('\n') != std::string::npos; });
    name_ = ":" + server_->output().substr(0, server_->output().find('\n'));
}

bool VirtualDisplay::pressUntil(const std::string& keys, const std::function<bool()>& done) const {
    std::vector<std::string> command = {"xdotool", "key", "--delay", "30"};
    std::istringstream names(keys);
    for (std::string key; names >> key;)
        command.push_back(key);
    return waitUntil([&] {
        if (!done())
            ChildProcess(command, {{"DISPLAY", name_}}).waitForEnd();
        return done();
    });
}

UpdaterProgram::UpdaterProgram(const DeviceFolder& device, const VirtualDisplay& display,
                               const std::string& argument, ChildProcess::Variables variables)
    : device_(device) {
    variables.insert({"UPDATER_DEVICE", device.root().string()});
    variables.insert({"DISPLAY", display.name()});
    std::vector<std::string> command = {UPDATER_PROGRAM};
    if (!argument.empty())
        command.push_back(argument);
    process_.emplace(command, variables);
}

bool UpdaterProgram::waitForScreen() {
    return waitUntil([this] { return device_.exists("FlashDisk/VELD/Updater-log.txt"); });
}
