#include "tests/blackbox/close_window.h"

#include <X11/Xlib.h>

std::string askWindowToClose(const std::string& display) {
    Display* const server = XOpenDisplay(display.c_str());
    if (server == nullptr)
        return {};
    Window root = 0;
    Window parent = 0;
    Window* windows = nullptr;
    unsigned int count = 0;
    XQueryTree(server, DefaultRootWindow(server), &root, &parent, &windows, &count);
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
        if (XSendEvent(server, windows[i], False, NoEventMask, &event) != 0)
            size = std::to_string(attributes.width) + "x" + std::to_string(attributes.height);
    }
    if (windows != nullptr)
        XFree(windows);
    XCloseDisplay(server);
    return size;
}
