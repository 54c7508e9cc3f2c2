#include "tests/blackbox/virtual_display.h"

#include <X11/Xlib.h>

#include <sstream>

VirtualDisplay::VirtualDisplay() {
    // The server prints the display number that it has chosen.
    server_.emplace(std::vector<std::string>{"Xvfb", "-displayfd", "1", "-screen", "0",
                                             "1024x768x24", "-nolisten", "tcp"});
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

std::string VirtualDisplay::closeWindow() const {
    Display* const server = XOpenDisplay(name_.c_str());
    if (server == nullptr)
        return {};
    Window parent = 0;
    Window* windows = nullptr;
    unsigned int count = 0;
    XQueryTree(server, DefaultRootWindow(server), &parent, &parent, &windows, &count);
    std::string size;
    for (unsigned int i = 0; i < count; ++i) {
        XWindowAttributes attributes{};
        if (!XGetWindowAttributes(server, windows[i], &attributes) ||
            attributes.map_state != IsViewable)
            continue;
        XEvent event{};
        event.xclient.type = ClientMessage;
        event.xclient.window = windows[i];
        event.xclient.message_type = XInternAtom(server, "WM_PROTOCOLS", False);
        event.xclient.format = 32;
        event.xclient.data.l[0] = static_cast<long>(XInternAtom(server, "WM_DELETE_WINDOW", False));
        XSendEvent(server, windows[i], False, NoEventMask, &event);
        size = std::to_string(attributes.width) + "x" + std::to_string(attributes.height);
    }
    if (windows != nullptr)
        XFree(windows);
    XCloseDisplay(server);
    return size;
}
