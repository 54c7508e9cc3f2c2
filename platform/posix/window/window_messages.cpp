// The message queue. Messages, including the quit message, are returned in the order in which they
// were posted.

#include "platform/posix/window/window_messages.h"

#include <deque>

#include "platform/posix/call_hook.h"
#include "platform/posix/window/window.h"

namespace {

std::deque<MSG>& queue() {
    // Never destroyed, because messages are still posted while the process exits.
    static auto& messages = *new std::deque<MSG>;
    return messages;
}

}  // namespace

namespace host {

void postMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    queue().push_back({window, message, wParam, lParam, 0, {0, 0}});
}

}  // namespace host

BOOL PeekMessageW(MSG* message, HWND, UINT, UINT, UINT) {
    if (host::refusedDisplayCall("PeekMessageW"))
        return FALSE;
    if (queue().empty())
        host::collectWindowEvents();
    if (queue().empty())
        return FALSE;
    *message = queue().front();
    queue().pop_front();
    return TRUE;
}

// Posts no character messages: the program reads no text from the keyboard.
BOOL TranslateMessage(const MSG*) {
    host::errorFromHook("TranslateMessage");
    return FALSE;
}

LRESULT DispatchMessageW(const MSG* message) {
    if (host::refusedByHook("DispatchMessageW"))
        return 0;
    return host::callWindowProcedure(message->hwnd, message->message, message->wParam,
                                     message->lParam);
}

void PostQuitMessage(int exitCode) {
    if (host::errorFromHook("PostQuitMessage", exitCode) == ERROR_SUCCESS)
        host::postMessage(nullptr, WM_QUIT, static_cast<WPARAM>(exitCode));
}
