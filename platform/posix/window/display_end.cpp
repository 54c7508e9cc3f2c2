#include "platform/posix/window/display_end.h"

#include <signal.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

#include "platform/posix/debug_output.h"

namespace host {
namespace {

constexpr int EXIT_DISPLAY_LOST = 4;
constexpr int PATIENCE = 3;  // seconds

volatile std::sig_atomic_t secondsWaited = 0;

void onSecond(int) {
    secondsWaited = waitsForDisplay != 0 ? secondsWaited + 1 : 0;
    if (secondsWaited >= PATIENCE) {
        tell("updater: the display does not answer");
        ::_exit(EXIT_DISPLAY_LOST);
    }
    ::alarm(1);
}

}  // namespace

volatile std::sig_atomic_t waitsForDisplay = 0;

void (*onDisplayLost)(const char* reason) = nullptr;

void endWithoutDisplay(const char* reason) {
    tell(std::string("updater: the display is lost: ") + reason);
    if (onDisplayLost != nullptr)
        onDisplayLost(reason);
    // Not exit: the libraries would use the display once more.
    std::_Exit(EXIT_DISPLAY_LOST);
}

void endWhenDisplayHangs() {
    struct sigaction action {};
    action.sa_handler = onSecond;
    action.sa_flags = SA_RESTART;
    ::sigaction(SIGALRM, &action, nullptr);
    ::alarm(1);
}

}  // namespace host
