// Sets a window and its context up as the updater does, and prints the colour and depth sizes of
// the configuration that it got: "5 6 5 0 24 0".

#include <cstdio>

#include "app/egl_context.h"
#include "app/window.h"

int main() {
    registerWindowClass();
    const HWND window = createMainWindow();
    if (window == nullptr)
        return 2;
    ShowWindow(window, SW_SHOWNORMAL);
    makeFullScreen(window, 1024, 768);
    EGLDisplay display = EGL_NO_DISPLAY;
    EGLSurface surface = EGL_NO_SURFACE;
    EGLContext context = EGL_NO_CONTEXT;
    if (!initEgl(window, display, surface, context))
        return 1;

    const auto sizeOf = [&](EGLConfig config, EGLint attribute) {
        EGLint value = -1;
        eglGetConfigAttrib(display, config, attribute, &value);
        return value;
    };
    EGLint id = 0;
    EGLint count = 0;
    EGLConfig config{};
    eglQueryContext(display, context, EGL_CONFIG_ID, &id);
    const EGLint byId[] = {EGL_CONFIG_ID, id, EGL_NONE};
    eglChooseConfig(display, byId, &config, 1, &count);
    for (const EGLint attribute : {EGL_RED_SIZE, EGL_GREEN_SIZE, EGL_BLUE_SIZE, EGL_ALPHA_SIZE,
                                   EGL_DEPTH_SIZE, EGL_STENCIL_SIZE})
        std::printf("%d ", sizeOf(config, attribute));
    std::printf("\n");
    return 0;
}
