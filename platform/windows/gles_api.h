// EGL and GLES 2.0 on Windows.
//
// The desktop's libraries give a context that is ES 2.0 to the letter. What the instrument's driver
// allows beyond it is added below.
#pragma once

#include <EGL/egl.h>
#include <GLES2/gl2.h>

#include "platform/windows/win32_api.h"

// The handle by which EGL knows `window`.
inline EGLNativeWindowType nativeWindowOf(HWND window) {
    return window;
}

#ifndef UNDER_CE
#include "platform/gles_precision.h"
#include "platform/windows/integer_arrays.h"
#endif
