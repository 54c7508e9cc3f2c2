#include "tests/support/recording_gl.h"

#include <algorithm>
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

std::string enumName(GLenum value) {
    static const std::map<GLenum, const char*> names = {
        {GL_VERTEX_SHADER, "GL_VERTEX_SHADER"},
        {GL_FRAGMENT_SHADER, "GL_FRAGMENT_SHADER"},
        {GL_COMPILE_STATUS, "GL_COMPILE_STATUS"},
        {GL_LINK_STATUS, "GL_LINK_STATUS"},
        {GL_INFO_LOG_LENGTH, "GL_INFO_LOG_LENGTH"},
        {GL_UNPACK_ALIGNMENT, "GL_UNPACK_ALIGNMENT"},
        {GL_TEXTURE_2D, "GL_TEXTURE_2D"},
        {GL_TEXTURE0, "GL_TEXTURE0"},
        {GL_TEXTURE_MIN_FILTER, "GL_TEXTURE_MIN_FILTER"},
        {GL_TEXTURE_MAG_FILTER, "GL_TEXTURE_MAG_FILTER"},
        {GL_LINEAR, "GL_LINEAR"},
        {GL_RGB, "GL_RGB"},
        {GL_LUMINANCE, "GL_LUMINANCE"},
        {GL_UNSIGNED_BYTE, "GL_UNSIGNED_BYTE"},
        {GL_UNSIGNED_SHORT, "GL_UNSIGNED_SHORT"},
        {GL_INT, "GL_INT"},
        {GL_FLOAT, "GL_FLOAT"},
        {GL_BLEND, "GL_BLEND"},
        {GL_SRC_ALPHA, "GL_SRC_ALPHA"},
        {GL_ONE_MINUS_SRC_ALPHA, "GL_ONE_MINUS_SRC_ALPHA"},
        {GL_LINES, "GL_LINES"},
        {GL_LINE_STRIP, "GL_LINE_STRIP"},
        {GL_TRIANGLES, "GL_TRIANGLES"},
    };
    const auto name = names.find(value);
    return name != names.end() ? name->second : std::to_string(value);
}

template <typename Number>
std::string join(const Number* numbers, int count, const char* separator = " ") {
    std::ostringstream text;
    for (int i = 0; i < count; ++i)
        text << (i == 0 ? "" : separator) << numbers[i];
    return text.str();
}

std::string vertexText(const RecordingGl::VertexArray& array, int vertex) {
    const int first = vertex * array.size;
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

void copyInfoLog(GLsizei capacity, GLsizei* length, GLchar* log) {
    *length = static_cast<GLsizei>(gl().infoLog.copy(log, static_cast<std::size_t>(capacity - 1)));
    log[*length] = '\0';
}

GLint infoLogLength() {
    return static_cast<GLint>(gl().infoLog.size() + 1);
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

// Calls that are recorded and do nothing else.
#define RECORDED(function, parameters, ...) \
    void function parameters {              \
        record(#function, __VA_ARGS__);     \
    }

RECORDED(glCompileShader, (GLuint shader), shader)
RECORDED(glDeleteShader, (GLuint shader), shader)
RECORDED(glAttachShader, (GLuint program, GLuint shader), program, shader)
RECORDED(glLinkProgram, (GLuint program), program)
RECORDED(glUseProgram, (GLuint program), program)
RECORDED(glUniform1i, (GLint location, GLint value), location, value)
RECORDED(glUniform1f, (GLint location, GLfloat value), location, value)
RECORDED(glUniform3f, (GLint location, GLfloat x, GLfloat y, GLfloat z), location, x, y, z)
RECORDED(glUniform4f, (GLint location, GLfloat x, GLfloat y, GLfloat z, GLfloat w), location, x, y,
         z, w)
RECORDED(glPixelStorei, (GLenum name, GLint value), enumName(name), value)
RECORDED(glDeleteTextures, (GLsizei count, const GLuint* textures), count, join(textures, count))
RECORDED(glActiveTexture, (GLenum unit), enumName(unit))
RECORDED(glTexParameteri, (GLenum target, GLenum name, GLint value), enumName(target),
         enumName(name), enumName(static_cast<GLenum>(value)))
RECORDED(glClearColor, (GLfloat red, GLfloat green, GLfloat blue, GLfloat alpha), red, green, blue,
         alpha)
RECORDED(glClear, (GLbitfield mask), mask)
RECORDED(glViewport, (GLint x, GLint y, GLsizei width, GLsizei height), x, y, width, height)
RECORDED(glEnable, (GLenum capability), enumName(capability))
RECORDED(glDisable, (GLenum capability), enumName(capability))
RECORDED(glBlendFunc, (GLenum source, GLenum destination), enumName(source), enumName(destination))
RECORDED(glLineWidth, (GLfloat width), width)

#undef RECORDED

// --- Shaders and programs ------------------------------------------------------------------------

GLuint glCreateShader(GLenum type) {
    record("glCreateShader", enumName(type));
    gl().shaderTypes[++gl().names] = type;
    return gl().names;
}

// The platform layer may pass the text in more strings than the program did: only the whole counts.
void glShaderSource(GLuint shader, GLsizei count, const GLchar* const* strings,
                    const GLint* lengths) {
    record("glShaderSource", shader);
    std::string& source = gl().shaderSources[shader];
    source.clear();
    for (GLsizei i = 0; i < count; ++i)
        if (lengths == nullptr || lengths[i] < 0)
            source += strings[i];
        else
            source.append(strings[i], static_cast<std::size_t>(lengths[i]));
}

// As in GL, a query of a shader that is none answers nothing.
void glGetShaderiv(GLuint shader, GLenum name, GLint* value) {
    const bool asksPlatform = name == GL_SHADER_TYPE;
    if (!asksPlatform)
        record("glGetShaderiv", shader, enumName(name));
    const auto type = gl().shaderTypes.find(shader);
    if (type == gl().shaderTypes.end())
        return;
    if (asksPlatform)
        *value = static_cast<GLint>(type->second);
    else
        *value = name == GL_COMPILE_STATUS ? gl().compileStatus[type->second] : infoLogLength();
}

void glGetShaderInfoLog(GLuint shader, GLsizei capacity, GLsizei* length, GLchar* log) {
    record("glGetShaderInfoLog", shader, capacity);
    copyInfoLog(capacity, length, log);
}

GLuint glCreateProgram() {
    record("glCreateProgram");
    return ++gl().names;
}

void glGetProgramiv(GLuint program, GLenum name, GLint* value) {
    record("glGetProgramiv", program, enumName(name));
    *value = name == GL_LINK_STATUS ? gl().linkStatus : infoLogLength();
}

void glGetProgramInfoLog(GLuint program, GLsizei capacity, GLsizei* length, GLchar* log) {
    record("glGetProgramInfoLog", program, capacity);
    copyInfoLog(capacity, length, log);
}

GLint glGetUniformLocation(GLuint program, const GLchar* name) {
    record("glGetUniformLocation", program, name);
    return find(gl().uniforms, name);
}

GLint glGetAttribLocation(GLuint program, const GLchar* name) {
    record("glGetAttribLocation", program, name);
    return find(gl().attributes, name);
}

void glUniformMatrix4fv(GLint location, GLsizei count, GLboolean transpose, const GLfloat* value) {
    record("glUniformMatrix4fv", location, count, static_cast<int>(transpose));
    gl().matrices[location].assign(value, value + 16);
}

// --- Textures ------------------------------------------------------------------------------------

void glGenTextures(GLsizei count, GLuint* textures) {
    record("glGenTextures", count);
    for (GLsizei i = 0; i < count; ++i)
        textures[i] = gl().texturesRunOut ? 0 : ++gl().names;
}

void glBindTexture(GLenum target, GLuint texture) {
    record("glBindTexture", enumName(target), texture);
    gl().boundTexture = texture;
}

void glTexImage2D(GLenum target, GLint level, GLint internalFormat, GLsizei width, GLsizei height,
                  GLint border, GLenum format, GLenum type, const void* pixels) {
    record("glTexImage2D", enumName(target), level, enumName(static_cast<GLenum>(internalFormat)),
           width, height, border, enumName(format), enumName(type));
    const unsigned char* const bytes = static_cast<const unsigned char*>(pixels);
    gl().texturePixels[gl().boundTexture].assign(
        bytes, bytes + static_cast<std::ptrdiff_t>(width) * height * (format == GL_RGB ? 3 : 1));
}

// --- Drawing -------------------------------------------------------------------------------------

void glEnableVertexAttribArray(GLuint index) {
    record("glEnableVertexAttribArray", index);
    gl().arrays[index].enabled = true;
}

void glDisableVertexAttribArray(GLuint index) {
    record("glDisableVertexAttribArray", index);
    gl().arrays[index].enabled = false;
}

void glVertexAttribPointer(GLuint index, GLint size, GLenum type, GLboolean normalized,
                           GLsizei stride, const void* data) {
    record("glVertexAttribPointer", index, size, enumName(type), static_cast<int>(normalized),
           stride);
    gl().arrays[index] = {gl().arrays[index].enabled, size, type, data};
}

void glDrawElements(GLenum mode, GLsizei count, GLenum type, const void* indices) {
    const GLushort* const numbers = static_cast<const GLushort*>(indices);
    record("glDrawElements", enumName(mode), enumName(type), join(numbers, count));
    recordVertices(*std::max_element(numbers, numbers + count) + 1);
}

void glDrawArrays(GLenum mode, GLint first, GLsizei count) {
    record("glDrawArrays", enumName(mode), first, count);
    recordVertices(count);
}
