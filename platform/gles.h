// The one header by which the program sees EGL and OpenGL ES 2.0.
//
// Desktop drivers are stricter than the instrument's. What they need beyond the calls that the
// program makes is added here and nowhere else, so that render/ and its shader texts stay as the
// instrument has them.
#pragma once

#include "platform/win32.h"

#ifdef _WIN32
#include "platform/windows/gles_api.h"
#else
#include "platform/posix/gles_api.h"
#endif
