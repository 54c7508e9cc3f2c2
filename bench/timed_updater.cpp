// The whole program, linked with a stop-watch around the calls of its frame loop and its start-up.
// Runs an update of the device folder, and prints where the time went when it ends.
//
// The linker leads each call from another file through the function of asm name "__wrap_..." here,
// and gives the true one as "__real_...".

#include <array>
#include <cstdio>
#include <cstdlib>

#include "bench/counted_heap.h"
#include "bench/measure.h"
#include "platform/entry_point.h"
#include "platform/gles.h"
#include "platform/posix/command_line.h"
#include "platform/win32.h"
#include "render/font_set.h"
#include "support/string_table.h"
#include "ui/simple_ui.h"

namespace {

enum Step {
    SLEEP,
    CLEAR,
    INIT,
    DRAW,
    TICK,
    SWAP,
    EVENTS,
    FONTS,
    TEXTS,
    TEXTURES,
    PROGRAMS,
    STEP_COUNT
};

std::array<double, STEP_COUNT> seconds;
double entry;
double firstSwap;
std::array<double, STEP_COUNT> beforeLoop;
unsigned long frames;
uint64_t heapAfterStart;

// Adds the time of a scope to a step.
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

// The frame that launches the application ends the program in the middle of its tick, so the last
// frame counts up to there.
void report() {
    const double end = now();
    const auto inLoop = [](Step step) { return seconds[step] - beforeLoop[step]; };
    std::fprintf(stderr, "loop %lu %.6f %.6f %.6f %.6f %.6f %.6f\n", frames, end - firstSwap,
                 inLoop(SLEEP), inLoop(CLEAR) + inLoop(DRAW), inLoop(SWAP), inLoop(TICK),
                 inLoop(EVENTS));
    std::fprintf(stderr, "start %.6f %.6f %.6f %.6f %.6f %.6f\n", firstSwap - entry, seconds[FONTS],
                 seconds[TEXTS], seconds[TEXTURES], beforeLoop[PROGRAMS], seconds[INIT]);
    std::fprintf(stderr, "memory %llu %llu %llu\n",
                 static_cast<unsigned long long>(peakResidentBytes()),
                 static_cast<unsigned long long>(heapCount().peakBytes),
                 static_cast<unsigned long long>(heapAfterStart));
}

}  // namespace

void realSleep(DWORD milliseconds) asm("__real__Z5Sleepj");
void realInit(SimpleUI* screen, uint32_t width, uint32_t height) asm("__real__ZN8SimpleUI4initEjj");
void realDraw(SimpleUI* screen) asm("__real__ZN8SimpleUI4drawEv");
void realTick(SimpleUI* screen) asm("__real__ZN8SimpleUI4tickEv");
bool realLoadFonts(FontSet* fonts, int32_t language) asm("__real__ZN7FontSet9loadFontsEi");
void realSetLanguage(StringTable* table,
                     int32_t language) asm("__real__ZN11StringTable11setLanguageEi");
GLuint realLoadTexture(const char* path, GLsizei size,
                       int32_t offset) asm("__real__Z23loadRawLuminanceTexturePKcii");
EGLBoolean realSwap(EGLDisplay display, EGLSurface surface) asm("__real_eglSwapBuffers");
void realClear(GLbitfield mask) asm("__real_glClear");
BOOL realPeek(MSG* message, HWND window, UINT first, UINT last,
              UINT remove) asm("__real__Z12PeekMessageWP3MSGP12WindowHandlejjj");
void realCompile(GLuint shader) asm("__real_glCompileShader");
void realLink(GLuint program) asm("__real_glLinkProgram");

void timedSleep(DWORD milliseconds) asm("__wrap__Z5Sleepj");
void timedInit(SimpleUI* screen, uint32_t width,
               uint32_t height) asm("__wrap__ZN8SimpleUI4initEjj");
void timedDraw(SimpleUI* screen) asm("__wrap__ZN8SimpleUI4drawEv");
void timedTick(SimpleUI* screen) asm("__wrap__ZN8SimpleUI4tickEv");
bool timedLoadFonts(FontSet* fonts, int32_t language) asm("__wrap__ZN7FontSet9loadFontsEi");
void timedSetLanguage(StringTable* table,
                      int32_t language) asm("__wrap__ZN11StringTable11setLanguageEi");
GLuint timedLoadTexture(const char* path, GLsizei size,
                        int32_t offset) asm("__wrap__Z23loadRawLuminanceTexturePKcii");
EGLBoolean timedSwap(EGLDisplay display, EGLSurface surface) asm("__wrap_eglSwapBuffers");
void timedClear(GLbitfield mask) asm("__wrap_glClear");
BOOL timedPeek(MSG* message, HWND window, UINT first, UINT last,
               UINT remove) asm("__wrap__Z12PeekMessageWP3MSGP12WindowHandlejjj");
void timedCompile(GLuint shader) asm("__wrap_glCompileShader");
void timedLink(GLuint program) asm("__wrap_glLinkProgram");

void timedSleep(DWORD milliseconds) {
    const Watch watch(SLEEP);
    realSleep(milliseconds);
}
void timedInit(SimpleUI* screen, uint32_t width, uint32_t height) {
    const Watch watch(INIT);
    realInit(screen, width, height);
    heapAfterStart = heapCount().bytesInUse;
}
void timedDraw(SimpleUI* screen) {
    const Watch watch(DRAW);
    realDraw(screen);
    ++frames;
}
void timedTick(SimpleUI* screen) {
    const Watch watch(TICK);
    realTick(screen);
}
bool timedLoadFonts(FontSet* fonts, int32_t language) {
    const Watch watch(FONTS);
    return realLoadFonts(fonts, language);
}
void timedSetLanguage(StringTable* table, int32_t language) {
    const Watch watch(TEXTS);
    realSetLanguage(table, language);
}
GLuint timedLoadTexture(const char* path, GLsizei size, int32_t offset) {
    const Watch watch(TEXTURES);
    return realLoadTexture(path, size, offset);
}
EGLBoolean timedSwap(EGLDisplay display, EGLSurface surface) {
    EGLBoolean result = EGL_FALSE;
    {
        const Watch watch(SWAP);
        result = realSwap(display, surface);
    }
    // The first frame warms the driver up and looks for the key; the loop is measured behind it.
    if (firstSwap == 0) {
        firstSwap = now();
        beforeLoop = seconds;
        frames = 0;
    }
    return result;
}
void timedClear(GLbitfield mask) {
    const Watch watch(CLEAR);
    realClear(mask);
}
BOOL timedPeek(MSG* message, HWND window, UINT first, UINT last, UINT remove) {
    const Watch watch(EVENTS);
    return realPeek(message, window, first, last, remove);
}
void timedCompile(GLuint shader) {
    const Watch watch(PROGRAMS);
    realCompile(shader);
}
void timedLink(GLuint program) {
    const Watch watch(PROGRAMS);
    realLink(program);
}

int main(int argc, char** argv) {
    entry = now();
    std::atexit(report);
    host::setCommandLine(argc, argv);
    return runUpdater();
}
