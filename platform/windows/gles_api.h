// EGL and GLES 2.0 on Windows.
//
// The desktop's libraries provide a strict ES 2.0 context. What the instrument's driver allows
// beyond it is added below.
#pragma once

#include <EGL/egl.h>
#include <GLES2/gl2.h>

#include "platform/windows/win32_api.h"

// Returns the native window handle that EGL expects.
inline EGLNativeWindowType nativeWindowOf(HWND window) {
    return window;
}

#ifndef UNDER_CE
#include "platform/gles_precision.h"
#include "platform/windows/integer_arrays.h"
#endif
