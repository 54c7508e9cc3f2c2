#include <vector>

#include "platform/gles.h"

// The name below means GL's own function.
#undef glShaderSource

namespace {

// "#line 1" makes the compiler's messages count lines from the shader's own first line.
constexpr const GLchar* PRECISION = "precision mediump float;\n#line 1\n";
constexpr GLint UNTIL_NUL = -1;

bool isFragmentShader(GLuint shader) {
    GLint type = 0;
    if (shader != 0)
        glGetShaderiv(shader, GL_SHADER_TYPE, &type);
    return type == GL_FRAGMENT_SHADER;
}

}  // namespace

void shaderSourceWithPrecision(GLuint shader, GLsizei count, const GLchar* const* strings,
                               const GLint* lengths) {
    if (count < 0 || !isFragmentShader(shader)) {
        glShaderSource(shader, count, strings, lengths);
        return;
    }
    std::vector<const GLchar*> allStrings = {PRECISION};
    std::vector<GLint> allLengths = {UNTIL_NUL};
    for (GLsizei i = 0; i < count; ++i) {
        allStrings.push_back(strings[i]);
        allLengths.push_back(lengths != nullptr ? lengths[i] : UNTIL_NUL);
    }
    glShaderSource(shader, count + 1, allStrings.data(), allLengths.data());
}
