// The updater, changed to wait before each frame for a line of its standard input, and to print its
// process, window and frame calls. A line may hold what is to happen before the frame.

#include <dlfcn.h>

#include <cstdio>
#include <iostream>
#include <string>

#include "app/entry.h"
#include "platform/entry_point.h"
#include "platform/gles.h"
#include "platform/posix/call_hook.h"
#include "platform/posix/command_line.h"
#include "platform/posix/window/window.h"

namespace {

// Gives access to the engine's state, because the screen also draws states that the engine never
// enters.
struct Engine : Updater {
    using Updater::state;
};
struct Screen : SimpleUI {
    static Updater& engine(SimpleUI& screen) { return screen.*(&Screen::updater); }
};

void obey(const std::string& line) {
    if (line.rfind("state ", 0) == 0)
        Screen::engine(theScreen).*(&Engine::state) = std::stoi(line.substr(6));
    if (line == "quit, then STOP") {
        PostQuitMessage(0);
        host::postMessage(nullptr, WM_KEYDOWN, VK_END);
    }
}

DWORD tell(const HookedCall& call) {
    const std::string name = call.name;
    for (const char* const told :
         {"OpenProcess", "CreateProcess", "Snapshot", "Terminate", "CloseHandle", "Class", "Window",
          "Metrics", "Sleep", "Translate", "Dispatch", "Quit", "Debug"}) {
        if (name.find(told) == std::string::npos)
            continue;
        std::printf("%s", call.name);
        // Process ids and traces are omitted: they differ in each run.
        for (std::size_t i = name == "OutputDebugStringW";
             i < call.arguments.size() && (i < 2 || told != name); ++i)
            std::printf(" %s", call.arguments[i].c_str());
        std::printf("\n");
    }
    if (name != "Sleep")
        return ERROR_SUCCESS;
    std::string line;
    if (call.arguments[0] == "2" && std::getline(std::cin, line))
        obey(line);
    return ERROR_INVALID_PARAMETER;  // the pauses are skipped
}

template <typename Function>
Function driversOwn(Function, const char* name) {
    return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, name));
}

}  // namespace

void glClear(GLbitfield mask) {
    GLfloat color[4] = {};
    glGetFloatv(GL_COLOR_CLEAR_VALUE, color);
    std::printf("glClear %u %g %g %g %g\n", mask, color[0], color[1], color[2], color[3]);
    driversOwn(glClear, "glClear")(mask);
}

#undef eglSwapBuffers  // the driver's call, not the one that the program sees
EGLBoolean eglSwapBuffers(EGLDisplay display, EGLSurface surface) {
    GLint arrays[2] = {};
    for (GLuint i = 0; i < 2; ++i)
        glGetVertexAttribiv(i, GL_VERTEX_ATTRIB_ARRAY_ENABLED, &arrays[i]);
    std::printf("eglSwapBuffers%s%s\n", arrays[0] + arrays[1] > 0 ? ", arrays still enabled" : "",
                glGetError() == GL_NO_ERROR ? "" : ", after a GL error");
    driversOwn(eglSwapBuffers, "eglSwapBuffers")(display, surface);
    return EGL_FALSE;  // the program goes on all the same
}

void glUseProgram(GLuint program) {
    if (program == 0)
        std::printf("glUseProgram 0\n");
    driversOwn(glUseProgram, "glUseProgram")(program);
}

void glDisable(GLenum what) {
    std::printf("glDisable %u\n", what);
    driversOwn(glDisable, "glDisable")(what);
}

int main(int argc, char** argv) {
    std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
    setCallHook(tell);
    host::setCommandLine(argc, argv);
    return runUpdater();
}
