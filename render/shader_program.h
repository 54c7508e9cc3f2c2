// GL programs by base name: "gui" is made of "gui.vert" and "gui.frag".
//
// All of it needs the GL context to be current. Faults are reported to the debugger only, and a
// program that did not build is handed out like any other: GL draws nothing with it.
#pragma once

#include <map>
#include <string>

#include "platform/gles.h"

using ProgramCache = std::map<std::string, GLuint>;

// The process-wide cache, made on first use. Its programs are never deleted: they go with the
// context.
ProgramCache& programCache();

// The program of that base name, built on the first request and never again, even when that build
// failed. 0, with nothing added to the cache, for a null or empty name.
GLuint getProgram(ProgramCache& cache, const char* baseName);

// Builds and links a program and leaves no program bound. 0 for a null name; otherwise the program,
// whether or not it compiled and linked.
GLuint createProgram(const char* baseName);

// Compiles one shader; `shaderType` is GL_VERTEX_SHADER or GL_FRAGMENT_SHADER. 0 when there is no
// source of that name.
GLuint compileShader(const std::string& fileName, GLenum shaderType);

// The location of a uniform; -1, and a line to the debugger, when the program has none of the name.
GLint getUniformLocation(GLuint program, const char* name);

// Send GL's log of the object to the debugger, if there is any text in it.
void printShaderInfoLog(GLuint shader);
void printProgramInfoLog(GLuint program);
