// Tests what is printed when a call of the display driver fails, and which configuration is chosen.
// A fake driver replaces the real one, which rarely fails.

#include "app/egl_context.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <string>
#include <vector>

namespace {

// Red, green, blue, alpha, depth and stencil size.
using Config = std::array<EGLint, 6>;

struct Driver {
    std::string failing;
    std::vector<Config> configs = {{5, 6, 5, 0, 24, 0}};
    int unreadableConfig = -1;
    std::string calls;  // one line each, with the attributes asked for
    int configTaken = -1;

    bool call(const std::string& name, const EGLint* attributes = nullptr, bool asMeant = true) {
        calls += name;
        for (; attributes != nullptr && *attributes != EGL_NONE; ++attributes)
            calls += ' ' + std::to_string(*attributes);
        calls += '\n';
        return name != failing && asMeant;
    }
    int indexOf(EGLConfig config) const {
        return static_cast<int>(static_cast<Config*>(config) - configs.data());
    }
};

Driver driver;
int handle;  // its address is the handle of every EGL object

}  // namespace

EGLDisplay eglGetDisplay(EGLNativeDisplayType native) {
    return driver.call("eglGetDisplay", nullptr, native == nullptr) ? &handle : EGL_NO_DISPLAY;
}
EGLBoolean eglInitialize(EGLDisplay, EGLint* major, EGLint* minor) {
    return driver.call("eglInitialize") && major == nullptr && minor == nullptr;
}
EGLBoolean eglChooseConfig(EGLDisplay, const EGLint* wanted, EGLConfig* configs, EGLint size,
                           EGLint* count) {
    *count = static_cast<EGLint>(driver.configs.size());
    for (Config& config : driver.configs)
        *configs++ = &config;
    return driver.call("eglChooseConfig", wanted) && size == 64;
}
EGLBoolean eglGetConfigAttrib(EGLDisplay, EGLConfig config, EGLint attribute, EGLint* value) {
    const EGLint sizes[] = {EGL_RED_SIZE,   EGL_GREEN_SIZE, EGL_BLUE_SIZE,
                            EGL_ALPHA_SIZE, EGL_DEPTH_SIZE, EGL_STENCIL_SIZE};
    const auto size = std::find(std::begin(sizes), std::end(sizes), attribute);
    *value = static_cast<Config*>(config)->at(static_cast<std::size_t>(size - std::begin(sizes)));
    return driver.indexOf(config) != driver.unreadableConfig || attribute != EGL_BLUE_SIZE;
}
EGLContext eglCreateContext(EGLDisplay, EGLConfig config, EGLContext shared, const EGLint* wanted) {
    driver.configTaken = driver.indexOf(config);
    return driver.call("eglCreateContext", wanted, shared == nullptr) ? &handle : EGL_NO_CONTEXT;
}
EGLSurface eglCreateWindowSurface(EGLDisplay, EGLConfig config, EGLNativeWindowType,
                                  const EGLint* wanted) {
    const bool sameConfig = driver.indexOf(config) == driver.configTaken;
    return driver.call("eglCreateWindowSurface", wanted, sameConfig) ? &handle : EGL_NO_SURFACE;
}
EGLBoolean eglMakeCurrent(EGLDisplay, EGLSurface draw, EGLSurface read, EGLContext context) {
    return driver.call("eglMakeCurrent", nullptr, draw == read && draw == context);
}
EGLBoolean eglDestroyContext(EGLDisplay, EGLContext) {
    return driver.call("eglDestroyContext");
}
EGLBoolean eglDestroySurface(EGLDisplay, EGLSurface) {
    return driver.call("eglDestroySurface");
}
EGLBoolean eglTerminate(EGLDisplay) {
    return driver.call("eglTerminate");
}
EGLBoolean eglSwapInterval(EGLDisplay, EGLint interval) {
    return driver.call("eglSwapInterval") && interval == 0;
}

namespace {

// Runs the set-up. Returns what it printed, with "done" in front when it succeeded.
std::string init() {
    EGLDisplay display = EGL_NO_DISPLAY;
    EGLSurface surface = EGL_NO_SURFACE;
    EGLContext context = EGL_NO_CONTEXT;
    ::testing::internal::CaptureStdout();
    const bool done = initEgl(nullptr, display, surface, context);
    EXPECT_TRUE(!done || (display == &handle && surface == &handle && context == &handle));
    return (done ? "done" : "") + ::testing::internal::GetCapturedStdout();
}

TEST(EglContext, SetUpStopsAtTheFirstFailingCallWithItsMessage) {
    const std::array<const char*, 3> steps[] = {
        {"eglGetDisplay", "", "\n>>> EGL failed to obtain display!  Exiting...\n\n"},
        {"eglInitialize", "", "\n>>> EGL failed to initialize!  Exiting...\n\n"},
        {"eglChooseConfig", " 12352 4 12320 16 12324 5 12323 6 12322 5 12321 0 12325 1 12326 0",
         "eglChooseConfig failed!\n"},
        {"eglCreateContext", " 12440 2", "\n>>> EGL failed to create context!  Exiting...\n\n"},
        {"eglCreateWindowSurface", "", "\n>>> EGL failed to create window surface!  Exiting..\n\n"},
        {"eglMakeCurrent", "", "\n>>> EGL couldn't make context current!  Exiting...\n\n"},
        {"eglSwapInterval", "", "\n>>> EGL couldn't set swap interval! Exiting...\n\n"},
        {"", "", "done"},
    };
    std::string order;
    for (const auto& [call, attributes, message] : steps) {
        driver = Driver();
        driver.failing = call;
        if (*call != '\0')
            order += std::string(call) + attributes + '\n';
        EXPECT_EQ(init(), message);
        EXPECT_EQ(driver.calls, order);
    }
    driver.configs.clear();
    EXPECT_EQ(init(), "No matching EGL configs found!\n");
}

TEST(EglContext, TeardownSaysWhatItDid) {
    const char* const calls[] = {"eglMakeCurrent", "eglDestroyContext", "eglDestroySurface",
                                 "eglTerminate"};
    for (const std::string failing : calls) {
        driver = Driver();
        driver.failing = failing;
        std::string order, said;
        for (const std::string call : calls) {
            order += call + '\n';
            said += call == failing || call == calls[0] ? "" : call + " SUCCESS\n";
        }
        ::testing::internal::CaptureStdout();
        EXPECT_TRUE(shutdownEgl(&handle, &handle, &handle));
        EXPECT_EQ(::testing::internal::GetCapturedStdout(), said);
        EXPECT_EQ(driver.calls, order);
    }
}

TEST(EglContext, ChoosesTheExactConfigOrTheFirst) {
    const Config exact = {5, 6, 5, 0, 16, 0};
    const Config other = {8, 8, 8, 0, 24, 0};
    std::vector<Config> many(64, other);
    many.back() = exact;
    struct Offer {
        std::vector<Config> configs;
        int taken;
        int unreadable = -1;
    };
    const Offer offers[] = {
        {{other, {5, 6, 5, 0, 24, 8}, {5, 6, 5, 0, 0, 0}, {5, 6, 5, 1, 24, 0}}, 0},
        {{other, {5, 6, 8, 0, 24, 0}, {5, 8, 5, 0, 24, 0}, {8, 6, 5, 0, 24, 0}}, 0},
        {{other, {5, 6, 5, 0, 1, 0}, exact}, 1},
        {many, 63},
        // A configuration whose attributes cannot be read is taken.
        {{other, other, other, exact}, 2, 2},
    };
    for (const Offer& offer : offers) {
        driver = Driver();
        driver.configs = offer.configs;
        driver.unreadableConfig = offer.unreadable;
        EXPECT_EQ(init(), offer.unreadable < 0 ? "done" : "doneeglGetConfigAttrib failed!\n");
        EXPECT_EQ(driver.configTaken, offer.taken);
    }
}

}  // namespace
