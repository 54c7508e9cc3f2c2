// The one header through which the program includes EGL and OpenGL ES 2.0.
//
// Desktop drivers are stricter than the instrument's. The workarounds for them are all here, so
// that render/ and its shaders stay as they are on the instrument.
#pragma once

#include "platform/win32.h"

#ifdef _WIN32
#include "platform/windows/gles_api.h"
#else
#include "platform/posix/gles_api.h"
#endif
