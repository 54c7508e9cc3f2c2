// EGL and GLES 2.0 of the desktop, with what their compiler needs beyond the instrument's.
#pragma once

// Keeps the X headers, and their macros, out of the program.
#define EGL_NO_X11
#include <EGL/egl.h>
#include <GLES2/gl2.h>

#include "platform/gles_precision.h"
#include "platform/posix/win32_api.h"

// The handle by which EGL knows `window`; 0 for a window that does not exist.
EGLNativeWindowType nativeWindowOf(HWND window);
