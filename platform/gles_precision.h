// Replaces glShaderSource for compilers that reject a fragment shader without a precision
// statement. The statement is passed as a separate first string, so the line numbers of the
// shader's text do not change. Include this after the GLES header.
#pragma once

void shaderSourceWithPrecision(GLuint shader, GLsizei count, const GLchar* const* strings,
                               const GLint* lengths);
#define glShaderSource shaderSourceWithPrecision
