// The source texts of the GL programs, by file name.
#pragma once

#include <memory>
#include <string>

// A NUL-terminated copy, owned by the caller, of the text of a shader such as "gui.vert"; null when
// no shader has exactly that name.
std::unique_ptr<char[]> getShaderSource(const std::string& fileName);

// A NUL-terminated copy, owned by the caller, of a file in the shader folder of the development
// tree; null when it cannot be opened. For trying out a text without a build: the program itself
// takes every text from the table.
std::unique_ptr<char[]> loadShaderFile(const std::string& fileName);
