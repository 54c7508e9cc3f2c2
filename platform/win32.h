// The one header through which the program includes the Win32 API.
//
// On Windows it includes the system's headers. Elsewhere platform/posix/ implements the subset in
// use, with the same names, types, results and error numbers. Nothing outside platform/ checks
// which system it runs on.
#pragma once

#ifdef _WIN32
#include "platform/windows/win32_api.h"
#else
#include "platform/posix/win32_api.h"
#endif

#include <string>

// UTF-16 text: all text that is drawn, and all paths passed to the system.
using WideString = std::basic_string<WCHAR>;
