// The EGL set-up against a scripted driver, for the failures that no real one gives.

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

// The driver: which call fails, what it offers, and what was asked of it.
struct Driver {
    std::string failing;
    std::vector<Config> configs = {{5, 6, 5, 0, 24, 0}};
    int unreadableConfig = -1;

    std::vector<std::string> calls;
    std::vector<EGLint> chooseAttributes;
    std::vector<EGLint> contextAttributes;
    int configTaken = -1;

    bool call(const std::string& name) {
        calls.push_back(name);
        return name != failing;
    }
};

Driver driver;

EGLDisplay const DISPLAY = reinterpret_cast<EGLDisplay>(0x11);
EGLSurface const SURFACE = reinterpret_cast<EGLSurface>(0x22);
EGLContext const CONTEXT = reinterpret_cast<EGLContext>(0x33);

EGLConfig toHandle(std::size_t index) {
    return reinterpret_cast<EGLConfig>(index + 1);
}
int toIndex(EGLConfig config) {
    return static_cast<int>(reinterpret_cast<uintptr_t>(config)) - 1;
}

std::vector<EGLint> upToNone(const EGLint* list) {
    std::vector<EGLint> values;
    for (; *list != EGL_NONE; ++list)
        values.push_back(*list);
    return values;
}

}  // namespace

EGLDisplay eglGetDisplay(EGLNativeDisplayType) {
    return driver.call("eglGetDisplay") ? DISPLAY : EGL_NO_DISPLAY;
}
EGLBoolean eglInitialize(EGLDisplay, EGLint* major, EGLint* minor) {
    EXPECT_EQ(major, nullptr);
    EXPECT_EQ(minor, nullptr);
    return driver.call("eglInitialize");
}
EGLBoolean eglChooseConfig(EGLDisplay, const EGLint* attributes, EGLConfig* configs, EGLint size,
                           EGLint* count) {
    EXPECT_EQ(size, 64);
    driver.chooseAttributes = upToNone(attributes);
    *count = static_cast<EGLint>(driver.configs.size());
    for (std::size_t i = 0; i < driver.configs.size(); ++i)
        configs[i] = toHandle(i);
    return driver.call("eglChooseConfig");
}
EGLBoolean eglGetConfigAttrib(EGLDisplay, EGLConfig handle, EGLint attribute, EGLint* value) {
    const int index = toIndex(handle);
    const EGLint sizes[] = {EGL_RED_SIZE,   EGL_GREEN_SIZE, EGL_BLUE_SIZE,
                            EGL_ALPHA_SIZE, EGL_DEPTH_SIZE, EGL_STENCIL_SIZE};
    const auto size = std::find(std::begin(sizes), std::end(sizes), attribute);
    *value = driver.configs.at(static_cast<std::size_t>(index))
                 .at(static_cast<std::size_t>(size - std::begin(sizes)));
    return index != driver.unreadableConfig || attribute != EGL_BLUE_SIZE;
}
EGLContext eglCreateContext(EGLDisplay, EGLConfig config, EGLContext shared,
                            const EGLint* attributes) {
    EXPECT_EQ(shared, EGL_NO_CONTEXT);
    driver.configTaken = toIndex(config);
    driver.contextAttributes = upToNone(attributes);
    return driver.call("eglCreateContext") ? CONTEXT : EGL_NO_CONTEXT;
}
EGLSurface eglCreateWindowSurface(EGLDisplay, EGLConfig config, EGLNativeWindowType,
                                  const EGLint*) {
    EXPECT_EQ(driver.configTaken, toIndex(config));
    return driver.call("eglCreateWindowSurface") ? SURFACE : EGL_NO_SURFACE;
}
EGLBoolean eglMakeCurrent(EGLDisplay, EGLSurface draw, EGLSurface, EGLContext) {
    return driver.call(draw == EGL_NO_SURFACE ? "eglMakeCurrent(none)" : "eglMakeCurrent");
}
EGLBoolean eglSwapInterval(EGLDisplay, EGLint interval) {
    EXPECT_EQ(interval, 0);
    return driver.call("eglSwapInterval");
}
EGLBoolean eglSwapBuffers(EGLDisplay, EGLSurface) {
    return EGL_TRUE;
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

namespace {

class EglContext : public ::testing::Test {
  protected:
    void SetUp() override { driver = Driver(); }

    bool init() {
        ::testing::internal::CaptureStdout();
        const bool result = initEgl(nullptr, display, surface, context);
        printed = ::testing::internal::GetCapturedStdout();
        return result;
    }

    EGLDisplay display = EGL_NO_DISPLAY;
    EGLSurface surface = EGL_NO_SURFACE;
    EGLContext context = EGL_NO_CONTEXT;
    std::string printed;
};

TEST_F(EglContext, IsSetUpInOrderUpToAFailingCallAndItsMessage) {
    const std::pair<const char*, const char*> steps[] = {
        {"eglGetDisplay", "\n>>> EGL failed to obtain display!  Exiting...\n\n"},
        {"eglInitialize", "\n>>> EGL failed to initialize!  Exiting...\n\n"},
        {"eglChooseConfig", "eglChooseConfig failed!\n"},
        {"eglCreateContext", "\n>>> EGL failed to create context!  Exiting...\n\n"},
        {"eglCreateWindowSurface", "\n>>> EGL failed to create window surface!  Exiting..\n\n"},
        {"eglMakeCurrent", "\n>>> EGL couldn't make context current!  Exiting...\n\n"},
        {"eglSwapInterval", "\n>>> EGL couldn't set swap interval! Exiting...\n\n"},
    };
    std::vector<std::string> order;
    for (const auto& [call, message] : steps) {
        driver = Driver();
        driver.failing = call;
        order.emplace_back(call);
        EXPECT_FALSE(init());
        EXPECT_EQ(printed, message);
        EXPECT_EQ(driver.calls, order);
    }
    driver = Driver();
    EXPECT_TRUE(init());
    EXPECT_EQ(printed, "");
    EXPECT_TRUE(display == DISPLAY && surface == SURFACE && context == CONTEXT);
    EXPECT_EQ(driver.calls, order);
    EXPECT_EQ(driver.chooseAttributes,
              (std::vector<EGLint>{0x3040, 4, 0x3020, 16, 0x3024, 5, 0x3023, 6, 0x3022, 5, 0x3021,
                                   0, 0x3025, 1, 0x3026, 0}));
    EXPECT_EQ(driver.contextAttributes, (std::vector<EGLint>{0x3098, 2}));
    driver.configs.clear();
    EXPECT_FALSE(init());
    EXPECT_EQ(printed, "No matching EGL configs found!\n");
}

TEST_F(EglContext, PicksTheExactConfigOrTheFirst) {
    const Config exact = {5, 6, 5, 0, 16, 0};
    const Config other = {8, 8, 8, 0, 24, 0};
    struct Offer {
        std::vector<Config> configs;
        int taken;
        int unreadable = -1;
    };
    const Offer offers[] = {
        {{exact}, 0},
        {{{8, 8, 8, 8, 24, 8}, other}, 0},
        {{other, {5, 6, 5, 0, 24, 8}, {5, 6, 5, 0, 0, 0}, {5, 6, 5, 1, 24, 0}}, 0},
        {{other, {5, 6, 5, 0, 1, 0}, exact}, 1},
        {std::vector<Config>(64, other), 0},
        // One that cannot be asked is taken as it is.
        {{other, other, other, exact}, 2, 2},
    };
    for (const Offer& offer : offers) {
        driver = Driver();
        driver.configs = offer.configs;
        driver.unreadableConfig = offer.unreadable;
        EXPECT_TRUE(init());
        EXPECT_EQ(driver.configTaken, offer.taken);
        EXPECT_EQ(printed, offer.unreadable < 0 ? "" : "eglGetConfigAttrib failed!\n");
    }
}

TEST_F(EglContext, ShutsDownInOrderAndTellsWhatSucceeded) {
    const std::pair<const char*, const char*> cases[] = {
        {"", "eglDestroyContext SUCCESS\neglDestroySurface SUCCESS\neglTerminate SUCCESS\n"},
        {"eglDestroyContext", "eglDestroySurface SUCCESS\neglTerminate SUCCESS\n"},
        {"eglDestroySurface", "eglDestroyContext SUCCESS\neglTerminate SUCCESS\n"},
        {"eglTerminate", "eglDestroyContext SUCCESS\neglDestroySurface SUCCESS\n"},
    };
    for (const auto& [failing, message] : cases) {
        driver = Driver();
        driver.failing = failing;
        ::testing::internal::CaptureStdout();
        EXPECT_TRUE(shutdownEgl(DISPLAY, SURFACE, CONTEXT));
        EXPECT_EQ(::testing::internal::GetCapturedStdout(), message);
        EXPECT_EQ(driver.calls,
                  (std::vector<std::string>{"eglMakeCurrent(none)", "eglDestroyContext",
                                            "eglDestroySurface", "eglTerminate"}));
    }
}

}  // namespace
