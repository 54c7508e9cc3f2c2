// Makes a GL context that draws in software, without a display.
#pragma once

#include <cstdlib>

#include "platform/gles.h"

// Makes a context with a surface of that size in pixels current. It stays current until the process
// ends, because GL programs stay cached as long. Returns false on failure.
inline bool makeOffscreenContext(EGLint width, EGLint height) {
    setenv("EGL_PLATFORM", "surfaceless", 1);
    setenv("LIBGL_ALWAYS_SOFTWARE", "1", 1);
    const EGLDisplay display = eglGetDisplay(EGL_DEFAULT_DISPLAY);
    constexpr EGLint WANTED[] = {EGL_SURFACE_TYPE, EGL_PBUFFER_BIT, EGL_RED_SIZE, 8, EGL_NONE};
    const EGLint extent[] = {EGL_WIDTH, width, EGL_HEIGHT, height, EGL_NONE};
    constexpr EGLint VERSION[] = {EGL_CONTEXT_CLIENT_VERSION, 2, EGL_NONE};
    EGLConfig config = nullptr;
    EGLint count = 0;
    if (eglInitialize(display, nullptr, nullptr) == EGL_FALSE ||
        eglChooseConfig(display, WANTED, &config, 1, &count) == EGL_FALSE || count == 0)
        return false;
    const EGLSurface surface = eglCreatePbufferSurface(display, config, extent);
    const EGLContext context = eglCreateContext(display, config, EGL_NO_CONTEXT, VERSION);
    return eglMakeCurrent(display, surface, surface, context) == EGL_TRUE;
}
