// Loaded in front of the updater by a rehearsal: counts the frames that it shows. The count goes
// into the file that UPDATEKEY_FRAMES names at every frame, as a signal may end the program.

#include <EGL/egl.h>
#include <dlfcn.h>

#include <cstdio>
#include <cstdlib>

namespace {

long frames = 0;

void writeCount() {
    const char* const path = std::getenv("UPDATEKEY_FRAMES");
    std::FILE* const file = path != nullptr ? std::fopen(path, "w") : nullptr;
    if (file == nullptr)
        return;
    std::fprintf(file, "%ld\n", frames);
    std::fclose(file);
}

}  // namespace

// The program's last frame is not swapped when it starts the application: it ends in the middle.
extern "C" EGLBoolean eglSwapBuffers(EGLDisplay display, EGLSurface surface) {
    using Swap = EGLBoolean (*)(EGLDisplay, EGLSurface);
    static const Swap swap = reinterpret_cast<Swap>(::dlsym(RTLD_NEXT, "eglSwapBuffers"));
    ++frames;
    writeCount();
    return swap(display, surface);
}
