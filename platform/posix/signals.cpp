#include "platform/posix/signals.h"

#include <signal.h>

#include <initializer_list>

#include "platform/posix/window/display_end.h"

namespace host {

namespace {

volatile sig_atomic_t closeRequested = 0;

void requestClose(int) {
    closeRequested = 1;
    endWhenDisplayHangs();
}

}  // namespace

void ignoreSignalsOfWrites() {
    ::signal(SIGPIPE, SIG_IGN);
    ::signal(SIGXFSZ, SIG_IGN);
}

void turnSignalsIntoCloseRequests() {
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction action {};
        ::sigaction(number, nullptr, &action);
        if (action.sa_handler == SIG_IGN)
            continue;
        action = {};
        action.sa_handler = requestClose;
        action.sa_flags = SA_RESTART;
        ::sigaction(number, &action, nullptr);
    }
}

bool takeCloseRequest() {
    const bool requested = closeRequested != 0;
    closeRequested = 0;
    return requested;
}

}  // namespace host
