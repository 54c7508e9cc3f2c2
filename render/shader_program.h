// GL programs by base name: "gui" consists of "gui.vert" and "gui.frag".
//
// All functions need a current GL context. Failures are traced to the debugger only. A program that
// failed to build is returned like any other; GL draws nothing with it.
#pragma once

#include <map>
#include <string>

#include "platform/gles.h"

using ProgramCache = std::map<std::string, GLuint>;

// The process-wide cache, created on first use. Its programs are never deleted; they are freed
// together with the context.
ProgramCache& programCache();

// Returns the program with this base name, which is built at the first request only, even when that
// build fails. Returns 0 for a null or empty name and caches nothing.
GLuint getProgram(ProgramCache& cache, const char* baseName);

// Builds and links a program; no program is bound afterwards. Returns 0 for a null name, otherwise
// the program, even when it failed to compile or link.
GLuint createProgram(const char* baseName);

// Compiles one shader; `shaderType` is GL_VERTEX_SHADER or GL_FRAGMENT_SHADER. Returns 0 when there
// is no source with this name.
GLuint compileShader(const std::string& fileName, GLenum shaderType);

// Returns the location of a uniform. Traces a message and returns -1 when the program has no such
// uniform.
GLint getUniformLocation(GLuint program, const char* name);

// Trace GL's log of the object, unless it is empty.
void printShaderInfoLog(GLuint shader);
void printProgramInfoLog(GLuint program);
