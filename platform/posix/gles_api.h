// EGL and GLES 2.0 on the desktop, with the workarounds for its shader compiler.
#pragma once

// Keeps the X headers and their macros out of the program.
#define EGL_NO_X11
#include <EGL/egl.h>
#include <GLES2/gl2.h>

#include "platform/gles_precision.h"
#include "platform/posix/win32_api.h"

// eglSwapBuffers, which may wait for the display.
EGLBoolean swapBuffersOfDisplay(EGLDisplay display, EGLSurface surface);
#define eglSwapBuffers swapBuffersOfDisplay

// Returns the native window handle that EGL expects; 0 for a window that does not exist.
EGLNativeWindowType nativeWindowOf(HWND window);
