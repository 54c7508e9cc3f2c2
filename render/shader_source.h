// The sources of the GL programs, by file name.
#pragma once

#include <memory>
#include <string>

// Returns a NUL-terminated copy of a shader's source, such as "gui.vert"; null when no shader has
// exactly this name.
std::unique_ptr<char[]> getShaderSource(const std::string& fileName);

// Returns a NUL-terminated copy of a file in the shader folder of the development tree; null when
// it cannot be opened. For trying out a source without a build; the program uses getShaderSource
// only.
std::unique_ptr<char[]> loadShaderFile(const std::string& fileName);
