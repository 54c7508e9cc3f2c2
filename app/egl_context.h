// The OpenGL ES 2.0 context of the program's one window.
#pragma once

#include "platform/gles.h"

// Creates a context of version 2 and makes it current on `window`, without waiting for the vertical
// blank. An exact RGB565 configuration is preferred; otherwise the driver's first one is taken.
// Returns false after printing the step that failed to the standard output.
bool initEgl(HWND window, EGLDisplay& display, EGLSurface& surface, EGLContext& context);

// Destroys the context and the surface, printing a line for each step that succeeds. Always returns
// true.
bool shutdownEgl(EGLDisplay display, EGLSurface surface, EGLContext context);
