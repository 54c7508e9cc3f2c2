#include "render/shader_program.h"

#include <cstring>
#include <memory>
#include <vector>

#include "render/shader_source.h"
#include "support/logger.h"

namespace {

// `getNumber` and `getLog` are GL's functions for shaders or for programs.
template <class GetNumber, class GetLog>
void printInfoLog(GLuint object, GetNumber getNumber, GetLog getLog) {
    GLint length = 0;
    getNumber(object, GL_INFO_LOG_LENGTH, &length);
    if (length <= 1)
        return;
    GLsizei written = 0;
    std::vector<GLchar> log(static_cast<std::size_t>(length));
    getLog(object, length, &written, log.data());
    debugPrint("%s", log.data());
}

}  // namespace

ProgramCache& programCache() {
    static ProgramCache cache;
    return cache;
}

GLuint getProgram(ProgramCache& cache, const char* baseName) {
    if (baseName == nullptr || *baseName == '\0')
        return 0;
    const auto entry = cache.find(baseName);
    if (entry != cache.end())
        return entry->second;
    const GLuint program = createProgram(baseName);
    cache[baseName] = program;
    return program;
}

GLuint createProgram(const char* baseName) {
    if (baseName == nullptr)
        return 0;
    const std::string vertexFile = std::string(baseName) + ".vert";
    const std::string fragmentFile = std::string(baseName) + ".frag";

    GLint compiled = 0;
    const GLuint vertexShader = compileShader(vertexFile, GL_VERTEX_SHADER);
    glGetShaderiv(vertexShader, GL_COMPILE_STATUS, &compiled);
    if (compiled == 0)
        printShaderInfoLog(vertexShader);

    // `compiled` is not reset: when the fragment shader is missing, it keeps the vertex shader's
    // status. Kept.
    const GLuint fragmentShader = compileShader(fragmentFile, GL_FRAGMENT_SHADER);
    glGetShaderiv(fragmentShader, GL_COMPILE_STATUS, &compiled);
    if (compiled == 0)
        printShaderInfoLog(fragmentShader);

    const GLuint program = glCreateProgram();
    // Each shader is compiled a second time. Kept.
    glCompileShader(vertexShader);
    glCompileShader(fragmentShader);
    glAttachShader(program, vertexShader);
    glAttachShader(program, fragmentShader);
    glDeleteShader(vertexShader);
    glDeleteShader(fragmentShader);
    glLinkProgram(program);

    // The link log is traced when compiling failed, not when linking failed. Kept.
    GLint linked = 0;
    glGetProgramiv(program, GL_LINK_STATUS, &linked);
    if (compiled != 1)
        printProgramInfoLog(program);

    glUseProgram(0);
    return program;
}

GLuint compileShader(const std::string& fileName, GLenum shaderType) {
    const std::unique_ptr<char[]> source = getShaderSource(fileName);
    if (source == nullptr)
        return 0;
    const GLchar* const text = source.get();
    const GLint length = static_cast<GLint>(std::strlen(text));
    const GLuint shader = glCreateShader(shaderType);
    glShaderSource(shader, 1, &text, &length);
    glCompileShader(shader);
    return shader;
}

GLint getUniformLocation(GLuint program, const char* name) {
    const GLint location = glGetUniformLocation(program, name);
    if (location == -1)
        debugPrint("No such uniform named \"%s\"", name);
    return location;
}

void printShaderInfoLog(GLuint shader) {
    printInfoLog(shader, glGetShaderiv, glGetShaderInfoLog);
}

void printProgramInfoLog(GLuint program) {
    printInfoLog(program, glGetProgramiv, glGetProgramInfoLog);
}
