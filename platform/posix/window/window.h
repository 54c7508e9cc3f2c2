// The message queue of the program's one thread.
#pragma once

#include "platform/posix/win32_api.h"

namespace host {

void postMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam = 0);

}  // namespace host
