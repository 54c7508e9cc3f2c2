#include "tests/helpers/recording_gl.h"

#include <algorithm>
#include <cstring>
#include <sstream>

#undef glShaderSource

namespace {

RecordingGl& gl() {
    return RecordingGl::instance();
}

template <typename... Arguments>
void record(const char* function, const Arguments&... arguments) {
    std::ostringstream line;
    [[maybe_unused]] const char* separator = "";
    line << function << '(';
    ((line << separator << arguments, separator = ", "), ...);
    line << ')';
    gl().calls.push_back(line.str());
}

template <typename Number>
std::string join(const Number* numbers, int count) {
    std::ostringstream text;
    for (int i = 0; i < count; ++i)
        text << (i == 0 ? "" : " ") << numbers[i];
    return text.str();
}

std::string vertexText(const RecordingGl::VertexArray& array, int vertex) {
    const int first = vertex * array.size;
    if (array.data == nullptr)
        return "not set";
    return array.type == GL_INT ? join(static_cast<const GLint*>(array.data) + first, array.size)
                                : join(static_cast<const GLfloat*>(array.data) + first, array.size);
}

void recordVertices(int count) {
    for (const auto& [index, array] : gl().arrays) {
        if (!array.enabled)
            continue;
        std::string line = "  " + std::to_string(index) + ":";
        for (int vertex = 0; vertex < count; ++vertex)
            line += (vertex == 0 ? " " : " | ") + vertexText(array, vertex);
        gl().calls.push_back(line);
    }
}

GLint find(const std::map<std::string, GLint>& locations, const char* name) {
    const auto location = locations.find(name);
    return location != locations.end() ? location->second : -1;
}

std::string logOf(GLuint object) {
    return gl().infoLog.empty() ? "" : gl().infoLog + ' ' + std::to_string(object);
}

void copyInfoLog(GLuint object, GLsizei capacity, GLsizei* length, GLchar* log) {
    *length = static_cast<GLsizei>(logOf(object).copy(log, static_cast<std::size_t>(capacity - 1)));
    log[*length] = '\0';
}

}  // namespace

RecordingGl& RecordingGl::instance() {
    static RecordingGl recording;
    return recording;
}

std::vector<std::string> RecordingGl::callsOf(const std::string& function) const {
    std::vector<std::string> found;
    for (const std::string& call : calls)
        if (call.compare(0, function.size() + 1, function + "(") == 0)
            found.push_back(call);
    return found;
}

// Defines a function that only records its call, or only sets something.
#define RECORDED(function, parameters, ...) \
    void function parameters {              \
        record(#function, __VA_ARGS__);     \
    }
#define SETTING(function, parameters, assignment) \
    void function parameters {                    \
        assignment;                               \
    }

RECORDED(glCompileShader, (GLuint shader), shader)
RECORDED(glLinkProgram, (GLuint program), program)
RECORDED(glDeleteShader, (GLuint shader), shader)
RECORDED(glShaderSource,
         (GLuint shader, GLsizei count, const GLchar* const* texts, const GLint* sizes), shader,
         count, std::strlen(texts[count - 1]) == static_cast<std::size_t>(sizes[count - 1]))
RECORDED(glUniform1f, (GLint location, GLfloat value), location, value)
RECORDED(glUniform3f, (GLint location, GLfloat x, GLfloat y, GLfloat z), location, x, y, z)
RECORDED(glUniform4f, (GLint location, GLfloat x, GLfloat y, GLfloat z, GLfloat w), location, x, y,
         z, w)
RECORDED(glDeleteTextures, (GLsizei count, const GLuint* textures), count, join(textures, count))
RECORDED(glLineWidth, (GLfloat width), width)
RECORDED(glPixelStorei, (GLenum name, GLint value), name, value)
SETTING(glEnableVertexAttribArray, (GLuint index), gl().arrays[index].enabled = true)
SETTING(glDisableVertexAttribArray, (GLuint index), gl().arrays[index].enabled = false)
SETTING(glUniformMatrix4fv, (GLint location, GLsizei, GLboolean, const GLfloat* value),
        gl().matrices[location].assign(value, value + 16))
RECORDED(glAttachShader, (GLuint program, GLuint shader), program, shader)
RECORDED(glUseProgram, (GLuint program), program)
RECORDED(glUniform1i, (GLint location, GLint value), location, value)
RECORDED(glActiveTexture, (GLenum unit), unit - GL_TEXTURE0)
RECORDED(glTexParameteri, (GLenum, GLenum name, GLint value), name, value)

#undef RECORDED
#undef SETTING

GLuint glCreateShader(GLenum type) {
    record("glCreateShader", type);
    gl().shaderTypes[++gl().names] = type;
    return gl().names;
}

// As in GL, querying an invalid shader leaves the value unchanged.
void glGetShaderiv(GLuint shader, GLenum name, GLint* value) {
    const auto type = gl().shaderTypes.find(shader);
    if (type != gl().shaderTypes.end())
        *value = name == GL_SHADER_TYPE      ? static_cast<GLint>(type->second)
                 : name == GL_COMPILE_STATUS ? gl().compileStatus[type->second]
                                             : static_cast<GLint>(logOf(shader).size() + 1);
}

void glGetShaderInfoLog(GLuint shader, GLsizei capacity, GLsizei* length, GLchar* log) {
    copyInfoLog(shader, capacity, length, log);
}

GLuint glCreateProgram() {
    return gl().namesRunOut ? 0 : ++gl().names;
}

// Always reports a failed link, which the program must ignore.
void glGetProgramiv(GLuint program, GLenum name, GLint* value) {
    *value = name == GL_LINK_STATUS ? 0 : static_cast<GLint>(logOf(program).size() + 1);
}

void glGetProgramInfoLog(GLuint program, GLsizei capacity, GLsizei* length, GLchar* log) {
    copyInfoLog(program, capacity, length, log);
}

GLint glGetUniformLocation(GLuint, const GLchar* name) {
    return find(gl().uniforms, name);
}

GLint glGetAttribLocation(GLuint, const GLchar* name) {
    return find(gl().attributes, name);
}

void glGenTextures(GLsizei count, GLuint* textures) {
    record("glGenTextures", count);
    for (GLsizei i = 0; i < count; ++i)
        textures[i] = gl().namesRunOut ? 0 : ++gl().names;
}

void glBindTexture(GLenum, GLuint texture) {
    record("glBindTexture", texture);
    gl().boundTexture = texture;
}

void glTexImage2D(GLenum, GLint, GLint kept, GLsizei width, GLsizei height, GLint, GLenum format,
                  GLenum, const void* pixels) {
    record("glTexImage2D", kept, width, height, format);
    const unsigned char* const bytes = static_cast<const unsigned char*>(pixels);
    gl().texturePixels[gl().boundTexture].assign(
        bytes, bytes + static_cast<std::ptrdiff_t>(width) * height * (format == GL_RGB ? 3 : 1));
}

void glVertexAttribPointer(GLuint index, GLint size, GLenum type, GLboolean normalized,
                           GLsizei stride, const void* data) {
    if (stride != 0 || normalized)
        record("other vertices", stride, normalized);
    gl().arrays[index] = {gl().arrays[index].enabled, size, type, data};
}

void glDrawElements(GLenum mode, GLsizei count, GLenum, const void* indices) {
    const GLushort* const numbers = static_cast<const GLushort*>(indices);
    record("glDrawElements", mode, join(numbers, count));
    recordVertices(*std::max_element(numbers, numbers + count) + 1);
}

void glDrawArrays(GLenum mode, GLint first, GLsizei count) {
    record("glDrawArrays", mode, first, count);
    recordVertices(count);
}
