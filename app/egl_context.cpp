#include "app/egl_context.h"

#include <cstdio>

namespace {

// clang-format off
constexpr EGLint CONFIG_ATTRIBUTES[] = {
    EGL_RENDERABLE_TYPE, EGL_OPENGL_ES2_BIT,
    EGL_BUFFER_SIZE, 16,
    EGL_RED_SIZE, 5,
    EGL_GREEN_SIZE, 6,
    EGL_BLUE_SIZE, 5,
    EGL_ALPHA_SIZE, 0,
    EGL_DEPTH_SIZE, 1,
    EGL_STENCIL_SIZE, 0,
    EGL_NONE,
};
// clang-format on
constexpr const EGLint* EXACT_SIZES = CONFIG_ATTRIBUTES + 4;  // from red on
constexpr EGLint CONTEXT_ATTRIBUTES[] = {EGL_CONTEXT_CLIENT_VERSION, 2, EGL_NONE};
constexpr EGLint MAX_CONFIGS = 64;

bool fail(const char* message) {
    std::printf("%s", message);
    return false;
}

// Returns the first configuration that is exactly RGB565 with a depth buffer, without alpha or
// stencil; the first of all when none is. A configuration whose attributes cannot be read is taken
// as it is.
EGLConfig pickConfig(EGLDisplay display, const EGLConfig* configs, EGLint count) {
    for (EGLint i = 0; i < count; ++i) {
        bool exact = true;
        for (const EGLint* wanted = EXACT_SIZES; *wanted != EGL_NONE; wanted += 2) {
            EGLint size = 0;
            if (!eglGetConfigAttrib(display, configs[i], wanted[0], &size)) {
                std::printf("eglGetConfigAttrib failed!\n");
                return configs[i];
            }
            exact &= wanted[0] == EGL_DEPTH_SIZE ? size >= wanted[1] : size == wanted[1];
        }
        if (exact)
            return configs[i];
    }
    return configs[0];
}

}  // namespace

bool initEgl(HWND window, EGLDisplay& display, EGLSurface& surface, EGLContext& context) {
    display = eglGetDisplay(EGL_DEFAULT_DISPLAY);
    if (display == EGL_NO_DISPLAY)
        return fail("\n>>> EGL failed to obtain display!  Exiting...\n\n");
    if (!eglInitialize(display, nullptr, nullptr))
        return fail("\n>>> EGL failed to initialize!  Exiting...\n\n");

    EGLConfig configs[MAX_CONFIGS] = {};
    EGLint count = 0;
    if (!eglChooseConfig(display, CONFIG_ATTRIBUTES, configs, MAX_CONFIGS, &count))
        return fail("eglChooseConfig failed!\n");
    if (count == 0)
        return fail("No matching EGL configs found!\n");
    // Two of the messages below are unlike the others: one ends in two dots, one has a single blank
    // before "Exiting". Kept.
    EGLConfig const config = pickConfig(display, configs, count);

    context = eglCreateContext(display, config, EGL_NO_CONTEXT, CONTEXT_ATTRIBUTES);
    if (context == EGL_NO_CONTEXT)
        return fail("\n>>> EGL failed to create context!  Exiting...\n\n");
    surface = eglCreateWindowSurface(display, config, nativeWindowOf(window), nullptr);
    if (surface == EGL_NO_SURFACE)
        return fail("\n>>> EGL failed to create window surface!  Exiting..\n\n");
    if (!eglMakeCurrent(display, surface, surface, context))
        return fail("\n>>> EGL couldn't make context current!  Exiting...\n\n");
    if (!eglSwapInterval(display, 0))
        return fail("\n>>> EGL couldn't set swap interval! Exiting...\n\n");
    return true;
}

bool shutdownEgl(EGLDisplay display, EGLSurface surface, EGLContext context) {
    eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    if (eglDestroyContext(display, context))
        std::printf("eglDestroyContext SUCCESS\n");
    if (eglDestroySurface(display, surface))
        std::printf("eglDestroySurface SUCCESS\n");
    if (eglTerminate(display))
        std::printf("eglTerminate SUCCESS\n");
    return true;
}
