// What the message queue needs of the windows.
#pragma once

#include "platform/posix/win32_api.h"

namespace host {

// Turns what happened on the desktop since the last call into posted messages.
void collectWindowEvents();

// 0 for a window that does not exist.
LRESULT callWindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

}  // namespace host
