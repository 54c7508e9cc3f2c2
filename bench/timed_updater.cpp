// The whole program, linked with a stopwatch around the calls of its start-up and frame loop.
// Updates the device folder and prints where the time went when it ends.
//
// The linker redirects each call from another file to the function with the assembler name
// "__wrap_..." in this file, and makes the original available as "__real_...".

#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>

#include "bench/counted_heap.h"
#include "platform/entry_point.h"
#include "platform/gles.h"
#include "platform/posix/command_line.h"
#include "platform/win32.h"
#include "render/font_set.h"
#include "support/string_table.h"
#include "ui/simple_ui.h"

namespace {

enum Step {
    StepClear,
    StepInit,
    StepDraw,
    StepSwap,
    StepFonts,
    StepTexts,
    StepTextures,
    StepPrograms,
    StepCount
};

double now() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

std::array<double, StepCount> seconds;
double entry;
double firstSwap;
std::array<double, StepCount> beforeLoop;
unsigned long frames;

// Adds the time spent in a scope to a step.
class Watch {
  public:
    explicit Watch(Step step) : step_(step), start_(now()) {}
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;
    ~Watch() { seconds[step_] += now() - start_; }

  private:
    Step step_;
    double start_;
};

// The last frame launches the application, which ends the program during its tick. It is counted up
// to that moment.
void report() {
    const double end = now();
    const auto inLoop = [](Step step) { return seconds[step] - beforeLoop[step]; };
    std::fprintf(stderr, "loop %lu %.6f %.6f %.6f\n", frames, end - firstSwap,
                 inLoop(StepClear) + inLoop(StepDraw), inLoop(StepSwap));
    std::fprintf(stderr, "start %.6f %.6f %.6f %.6f %.6f %.6f\n", firstSwap - entry,
                 seconds[StepFonts], seconds[StepTexts], seconds[StepTextures],
                 beforeLoop[StepPrograms], seconds[StepInit]);
    std::fprintf(stderr, "memory %llu %llu\n", static_cast<unsigned long long>(peakResidentBytes()),
                 static_cast<unsigned long long>(heapCount().peakBytes));
}

}  // namespace

// Declares the original function of a symbol and the one that replaces it.
#define WRAPPED(result, name, symbol, parameters)        \
    result real##name parameters asm("__real_" symbol);  \
    result timed##name parameters asm("__wrap_" symbol); \
    result timed##name parameters

#define TIMED(step, result, name, symbol, parameters, arguments) \
    WRAPPED(result, name, symbol, parameters) {                  \
        const Watch watch(step);                                 \
        return real##name arguments;                             \
    }

TIMED(StepClear, void, Clear, "glClear", (GLbitfield mask), (mask))
TIMED(StepFonts, bool, LoadFonts, "_ZN7FontSet9loadFontsEi", (FontSet * fonts, int32_t language),
      (fonts, language))
TIMED(StepTexts, void, SetLanguage, "_ZN11StringTable11setLanguageEi",
      (StringTable * table, int32_t language), (table, language))
TIMED(StepTextures, GLuint, LoadTexture, "_Z23loadRawLuminanceTexturePKcii",
      (const char* path, GLsizei size, int32_t offset), (path, size, offset))
TIMED(StepPrograms, void, Compile, "glCompileShader", (GLuint shader), (shader))
TIMED(StepPrograms, void, Link, "glLinkProgram", (GLuint program), (program))

TIMED(StepInit, void, Init, "_ZN8SimpleUI4initEjj",
      (SimpleUI * screen, uint32_t width, uint32_t height), (screen, width, height))

WRAPPED(void, Draw, "_ZN8SimpleUI4drawEv", (SimpleUI * screen)) {
    const Watch watch(StepDraw);
    realDraw(screen);
    ++frames;
}

WRAPPED(EGLBoolean, Swap, "eglSwapBuffers", (EGLDisplay display, EGLSurface surface)) {
    EGLBoolean result = EGL_FALSE;
    {
        const Watch watch(StepSwap);
        result = realSwap(display, surface);
    }
    // The first frame warms up the driver and looks for the update key; measuring starts after it.
    if (firstSwap == 0) {
        firstSwap = now();
        beforeLoop = seconds;
        frames = 0;
    }
    return result;
}

int main(int argc, char** argv) {
    entry = now();
    std::atexit(report);
    host::setCommandLine(argc, argv);
    return runUpdater();
}
