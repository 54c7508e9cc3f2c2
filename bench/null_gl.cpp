// A GL that does nothing, so that only the program's own work is counted. It returns valid names,
// every shader compiles, and every attribute and uniform is found.

#include "bench/null_gl.h"

#include <GLES2/gl2.h>

namespace {

uint64_t drawCalls;
GLuint lastName;

}  // namespace

uint64_t nullGlDrawCalls() {
    return drawCalls;
}

extern "C" {

void glActiveTexture(GLenum) {}
void glAttachShader(GLuint, GLuint) {}
void glBindTexture(GLenum, GLuint) {}
void glBlendFunc(GLenum, GLenum) {}
void glClear(GLbitfield) {}
void glClearColor(GLfloat, GLfloat, GLfloat, GLfloat) {}
void glCompileShader(GLuint) {}
GLuint glCreateProgram() {
    return ++lastName;
}
GLuint glCreateShader(GLenum) {
    return ++lastName;
}
void glDeleteShader(GLuint) {}
void glDeleteTextures(GLsizei, const GLuint*) {}
void glDisable(GLenum) {}
void glDisableVertexAttribArray(GLuint) {}
void glDrawArrays(GLenum, GLint, GLsizei) {
    ++drawCalls;
}
void glDrawElements(GLenum, GLsizei, GLenum, const void*) {
    ++drawCalls;
}
void glEnable(GLenum) {}
void glEnableVertexAttribArray(GLuint) {}
void glGenTextures(GLsizei count, GLuint* names) {
    for (GLsizei i = 0; i < count; ++i)
        names[i] = ++lastName;
}
GLint glGetAttribLocation(GLuint, const GLchar* name) {
    return name[2] == 'p' ? 0 : 1;
}
void glGetProgramInfoLog(GLuint, GLsizei, GLsizei* length, GLchar*) {
    *length = 0;
}
void glGetProgramiv(GLuint, GLenum, GLint* value) {
    *value = 1;
}
void glGetShaderInfoLog(GLuint, GLsizei, GLsizei* length, GLchar*) {
    *length = 0;
}
void glGetShaderiv(GLuint, GLenum, GLint* value) {
    *value = 1;
}
GLint glGetUniformLocation(GLuint, const GLchar*) {
    return 0;
}
void glLineWidth(GLfloat) {}
void glLinkProgram(GLuint) {}
void glPixelStorei(GLenum, GLint) {}
void glShaderSource(GLuint, GLsizei, const GLchar* const*, const GLint*) {}
void glTexImage2D(GLenum, GLint, GLint, GLsizei, GLsizei, GLint, GLenum, GLenum, const void*) {}
void glTexParameteri(GLenum, GLenum, GLint) {}
void glUniform1f(GLint, GLfloat) {}
void glUniform1i(GLint, GLint) {}
void glUniform3f(GLint, GLfloat, GLfloat, GLfloat) {}
void glUniform4f(GLint, GLfloat, GLfloat, GLfloat, GLfloat) {}
void glUniformMatrix4fv(GLint, GLsizei, GLboolean, const GLfloat*) {}
void glUseProgram(GLuint) {}
void glVertexAttribPointer(GLuint, GLint, GLenum, GLboolean, GLsizei, const void*) {}

}  // extern "C"
