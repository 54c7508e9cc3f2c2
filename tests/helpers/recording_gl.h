// A fake GL, linked into a test in place of the driver. It records the relevant calls as text and
// returns what the test has configured.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "platform/gles.h"

struct RecordingGl {
    // The instance used by the gl functions.
    static RecordingGl& instance();
    // Clears all calls, objects and configured results.
    static void reset() { instance() = RecordingGl(); }

    // One line per call, such as "glUniform1i(4, 0)". After a draw call follows a line for each
    // enabled array with its current vertices, such as " 0: 1 2 | 3 4".
    std::vector<std::string> calls;
    std::vector<std::string> callsOf(const std::string& function) const;

    // Configured results.
    std::map<GLenum, GLint> compileStatus = {{GL_VERTEX_SHADER, 1}, {GL_FRAGMENT_SHADER, 1}};
    std::string infoLog;  // of all shaders and programs, which add their own number
    std::map<std::string, GLint> uniforms = {
        {"mvmtx", 1}, {"prmtx", 2}, {"u_fontColor", 3}, {"s_texture", 4}};
    std::map<std::string, GLint> attributes = {{"a_position", 2}, {"a_texCoord", 3}};
    bool namesRunOut = false;  // of textures and programs

    // Objects created so far.
    std::map<GLuint, GLenum> shaderTypes;
    std::map<GLuint, std::vector<unsigned char>> texturePixels;
    std::map<GLint, std::vector<GLfloat>> matrices;  // by uniform location
    GLuint boundTexture = 0;
    GLuint names = 0;  // the last object name given

    struct VertexArray {
        bool enabled = false;
        GLint size = 0;
        GLenum type = 0;
        const void* data = nullptr;
    };
    std::map<GLuint, VertexArray> arrays;
};
