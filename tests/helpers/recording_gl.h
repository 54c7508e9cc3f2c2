// A GL that draws nothing. Linked into a test it takes the driver's place: it records the calls
// that matter as lines of text and answers as the test has set it up.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "platform/gles.h"

struct RecordingGl {
    // The one that the gl calls work on.
    static RecordingGl& instance();
    // Forgets all calls and objects, and all that a test has set up.
    static void reset() { instance() = RecordingGl(); }

    // One line a call, such as "glUniform1i(4, 0)". A draw call is followed by a line for each
    // enabled array, "  0: 1 2 | 3 4", with what the vertices hold at that time.
    std::vector<std::string> calls;
    std::vector<std::string> callsOf(const std::string& function) const;

    // Answers.
    std::map<GLenum, GLint> compileStatus = {{GL_VERTEX_SHADER, 1}, {GL_FRAGMENT_SHADER, 1}};
    std::string infoLog;  // of every shader and program
    std::map<std::string, GLint> uniforms = {
        {"mvmtx", 1}, {"prmtx", 2}, {"u_fontColor", 3}, {"s_texture", 4}};
    std::map<std::string, GLint> attributes = {{"a_position", 2}, {"a_texCoord", 3}};
    bool texturesRunOut = false;

    // Objects.
    std::map<GLuint, GLenum> shaderTypes;
    std::map<GLuint, std::vector<unsigned char>> texturePixels;
    std::map<GLint, std::vector<GLfloat>> matrices;  // by uniform location
    GLuint boundTexture = 0;
    GLuint names = 0;  // given to objects so far

    struct VertexArray {
        bool enabled = false;
        GLint size = 0;
        GLenum type = 0;
        const void* data = nullptr;
    };
    std::map<GLuint, VertexArray> arrays;
};
