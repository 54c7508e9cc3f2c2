// A library that a rehearsal preloads into the updater to count its frames. The count is written at
// every frame, because a signal may end the program, to the file that the environment variable
// UPDATEKEY_FRAMES names.

#include <EGL/egl.h>
#include <dlfcn.h>

#include <cstdio>
#include <cstdlib>

// The last frame is not swapped: the program exits during it when it starts the application.
extern "C" EGLBoolean eglSwapBuffers(EGLDisplay display, EGLSurface surface) {
    using Swap = EGLBoolean (*)(EGLDisplay, EGLSurface);
    static const Swap SWAP = reinterpret_cast<Swap>(::dlsym(RTLD_NEXT, "eglSwapBuffers"));
    static long frames = 0;
    ++frames;
    const char* const path = std::getenv("UPDATEKEY_FRAMES");
    if (std::FILE* const file = path != nullptr ? std::fopen(path, "w") : nullptr) {
        std::fprintf(file, "%ld\n", frames);
        std::fclose(file);
    }
    return SWAP(display, surface);
}
