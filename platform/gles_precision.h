// glShaderSource for compilers that refuse a fragment shader without a precision statement: each
// fragment shader gets one in a string of its own, which leaves the line numbers of the text alone.
// To be included behind the GLES header.
#pragma once

void shaderSourceWithPrecision(GLuint shader, GLsizei count, const GLchar* const* strings,
                               const GLint* lengths);
#define glShaderSource shaderSourceWithPrecision
