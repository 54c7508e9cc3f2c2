// Vertex arrays of GL_INT for a strict ES 2.0 context, which refuses them: they are kept aside, and
// handed over as floats when they are drawn. To be included behind the GLES header.
#pragma once

// The array of `pointer` is read at each draw, as GL itself does; integers are never normalised.
void vertexAttribPointerWithIntegers(GLuint index, GLint size, GLenum type, GLboolean normalized,
                                     GLsizei stride, const void* pointer);

// Indices of GL_UNSIGNED_BYTE or GL_UNSIGNED_SHORT in the program's memory.
void drawElementsWithIntegers(GLenum mode, GLsizei count, GLenum type, const void* indices);

void drawArraysWithIntegers(GLenum mode, GLint first, GLsizei count);

#define glVertexAttribPointer vertexAttribPointerWithIntegers
#define glDrawElements drawElementsWithIntegers
#define glDrawArrays drawArraysWithIntegers
