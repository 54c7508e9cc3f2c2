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

}  // namespace

EGLDisplay eglGetDisplay(EGLNativeDisplayType) {
    return driver.call("eglGetDisplay") ? DISPLAY : EGL_NO_DISPLAY;
}
EGLBoolean eglInitialize(EGLDisplay, EGLint* major, EGLint* minor) {
    EXPECT_EQ(major, nullptr);
    EXPECT_EQ(minor, nullptr);
    return driver.call("eglInitialize");
}
EGLBoolean eglChooseConfig(EGLDisplay, const EGLint*, EGLConfig* configs, EGLint size,
                           EGLint* count) {
    EXPECT_EQ(size, 64);
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
EGLContext eglCreateContext(EGLDisplay, EGLConfig config, EGLContext shared, const EGLint*) {
    EXPECT_EQ(shared, EGL_NO_CONTEXT);
    driver.configTaken = toIndex(config);
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

}  // namespace
