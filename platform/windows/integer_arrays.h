// Vertex arrays of GL_INT for a strict ES 2.0 context, which rejects them. The arrays are
// remembered and passed to GL as floats when they are drawn. Include this after the GLES header.
#pragma once

// Like GL itself, reads the array at `pointer` at every draw call. Integers are never normalised.
void vertexAttribPointerWithIntegers(GLuint index, GLint size, GLenum type, GLboolean normalized,
                                     GLsizei stride, const void* pointer);

// The indices are GL_UNSIGNED_SHORT, in client memory.
void drawElementsWithIntegers(GLenum mode, GLsizei count, GLenum type, const void* indices);

void drawArraysWithIntegers(GLenum mode, GLint first, GLsizei count);

#define glVertexAttribPointer vertexAttribPointerWithIntegers
#define glDrawElements drawElementsWithIntegers
#define glDrawArrays drawArraysWithIntegers
