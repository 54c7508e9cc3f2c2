// The functions of the windows that the message queue uses.
#pragma once

#include "platform/posix/win32_api.h"

namespace host {

// Posts a message for each desktop event since the last call.
void collectWindowEvents();

// Returns 0 for a window that does not exist.
LRESULT callWindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

}  // namespace host
