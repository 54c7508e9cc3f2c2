// The entry routine and the frame loop. There is one thread: the update runs inside the loop.

#include "app/entry.h"

#include <cstdio>

#include "app/command_line.h"
#include "app/egl_context.h"
#include "app/process_control.h"
#include "app/window.h"
#include "platform/entry_point.h"
#include "platform/gles.h"
#include "support/logger.h"
#include "support/text.h"

SimpleUI theScreen;

namespace {

uint32_t screenWidth;
uint32_t screenHeight;
EGLDisplay eglDisplay;
EGLSurface eglSurface;
EGLContext eglContext;

void applyCommandLine() {
    const CommandLine line = parseCommandLine(narrow(GetCommandLineW()));
    if (line.autoMode)
        theScreen.setAutoMode();
    else
        theScreen.setLaunchArguments(line.firstArgument, line.secondArgument);
}

// Dispatches the pending messages. Returns false as soon as it meets the quit message; messages
// queued behind that one are not dispatched.
bool drainMessages() {
    MSG message{};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        if (message.message == WM_QUIT)
            return false;
        DispatchMessageW(&message);
    }
    return true;
}

void runFrames() {
    constexpr DWORD FRAME_PAUSE = 2;
    do {
        Sleep(FRAME_PAUSE);
        glClear(GL_COLOR_BUFFER_BIT);
        theScreen.draw();
        theScreen.tick();
        eglSwapBuffers(eglDisplay, eglSurface);
    } while (drainMessages());
}

}  // namespace

void logDisplayLost(const char* reason) {
    Logger::instance().error("The display is lost: %s.", reason);
}

int runUpdater() {
    terminateProcessByName(keylayout::PROGRAM);
    terminateProcessByName("KSTRLLF.exe");

    registerWindowClass();
    const HWND window = createMainWindow();
    if (window == nullptr)
        return -1;
    ShowWindow(window, SW_SHOWNORMAL);
    screenWidth = static_cast<uint32_t>(GetSystemMetrics(SM_CXSCREEN));
    screenHeight = static_cast<uint32_t>(GetSystemMetrics(SM_CYSCREEN));
    makeFullScreen(window, screenWidth, screenHeight);

    if (!initEgl(window, eglDisplay, eglSurface, eglContext))
        return 1;
    theScreen.init(screenWidth, screenHeight);
    applyCommandLine();

    runFrames();

    shutdownEgl(eglDisplay, eglSurface, eglContext);
    if (DestroyWindow(window))
        std::printf("DestroyWindow SUCCESS\n");
    return 0;
}
