#include <algorithm>
#include <cstring>
#include <map>
#include <vector>

#include "platform/gles.h"

#ifndef UNDER_CE

// The names below mean GL's own functions.
#undef glVertexAttribPointer
#undef glDrawElements
#undef glDrawArrays

namespace {

struct IntegerArray {
    GLint size;
    GLsizei stride;
    const unsigned char* data;
    // GL reads these until the next draw call.
    std::vector<GLfloat> floats;
};

std::map<GLuint, IntegerArray>& integerArrays() {
    static std::map<GLuint, IntegerArray> arrays;
    return arrays;
}

bool isEnabled(GLuint index) {
    GLint enabled = GL_FALSE;
    glGetVertexAttribiv(index, GL_VERTEX_ATTRIB_ARRAY_ENABLED, &enabled);
    return enabled != GL_FALSE;
}

// Passes the first `vertexCount` vertices of every enabled integer array to GL as floats.
void convertArrays(std::size_t vertexCount) {
    for (auto& [index, array] : integerArrays()) {
        if (!isEnabled(index))
            continue;
        const auto size = static_cast<std::size_t>(array.size);
        const std::size_t packed = size * sizeof(GLint);
        const std::size_t stride =
            array.stride > 0 ? static_cast<std::size_t>(array.stride) : packed;
        std::vector<GLint> vertex(size);
        array.floats.clear();
        for (std::size_t i = 0; i < vertexCount; ++i) {
            std::memcpy(vertex.data(), array.data + i * stride, packed);
            for (const GLint value : vertex)
                array.floats.push_back(static_cast<GLfloat>(value));
        }
        glVertexAttribPointer(index, array.size, GL_FLOAT, GL_FALSE, 0, array.floats.data());
    }
}

std::size_t verticesReached(const void* indices, GLsizei count) {
    const auto* const first = static_cast<const GLushort*>(indices);
    return count > 0 ? std::size_t{*std::max_element(first, first + count)} + 1 : 0;
}

}  // namespace

void vertexAttribPointerWithIntegers(GLuint index, GLint size, GLenum type, GLboolean normalized,
                                     GLsizei stride, const void* pointer) {
    integerArrays().erase(index);
    if (type != GL_INT || size < 1 || size > 4 || stride < 0 || pointer == nullptr)
        glVertexAttribPointer(index, size, type, normalized, stride, pointer);
    else
        integerArrays()[index] = {size, stride, static_cast<const unsigned char*>(pointer), {}};
}

void drawElementsWithIntegers(GLenum mode, GLsizei count, GLenum type, const void* indices) {
    // The program has no other indices.
    if (type == GL_UNSIGNED_SHORT)
        convertArrays(verticesReached(indices, count));
    glDrawElements(mode, count, type, indices);
}

void drawArraysWithIntegers(GLenum mode, GLint first, GLsizei count) {
    if (first >= 0 && count > 0)
        convertArrays(static_cast<std::size_t>(first) + static_cast<std::size_t>(count));
    glDrawArrays(mode, first, count);
}

#endif
