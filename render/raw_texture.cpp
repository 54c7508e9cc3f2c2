#include "render/raw_texture.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <new>

#include "platform/input_limits.h"
#include "support/logger.h"
#include "support/open_file.h"

namespace {

using Pixels = std::unique_ptr<unsigned char[]>;

// Reads `size` bytes from the current position and fills up with zeros at the end of the file.
// Returns null when memory runs out.
Pixels readPixels(std::FILE* file, uint64_t size) {
    const std::size_t count = static_cast<std::size_t>(size);
    Pixels pixels(new (std::nothrow) unsigned char[count]);
    if (pixels == nullptr)
        return nullptr;
    const std::size_t got = std::fread(pixels.get(), 1, count, file);
    std::fill(pixels.get() + got, pixels.get() + count, static_cast<unsigned char>(0));
    return pixels;
}

// Reads `size` bytes from byte `offset` of the file at `path`. Logs the reason and returns null
// when the file is missing, too short or too large.
Pixels loadPixels(const char* path, int32_t offset, uint64_t size) {
    if (path == nullptr)
        return nullptr;
    const FilePointer file = openFile(path, TEXT("rb"));
    if (file == nullptr) {
        Logger::instance().error("File %s not found.", path);
        return nullptr;
    }
    std::fseek(file.get(), offset, SEEK_SET);
    if (size > limits::COMPLETED_PICTURE && size / 2 > bytesLeft(file.get())) {
        Logger::instance().error("File %s is too short.", path);
        return nullptr;
    }
    Pixels pixels = readPixels(file.get(), size);
    if (pixels == nullptr)
        Logger::instance().error("File %s is too large.", path);
    return pixels;
}

// Returns 0 when GL has no name for the texture.
GLuint makeTexture(GLenum format, GLsizei width, GLsizei height, const unsigned char* pixels) {
    GLuint texture = 0;
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glGenTextures(1, &texture);
    if (texture == 0)
        return 0;
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexImage2D(GL_TEXTURE_2D, 0, static_cast<GLint>(format), width, height, 0, format,
                 GL_UNSIGNED_BYTE, pixels);
    return texture;
}

uint64_t byteCount(GLsizei width, GLsizei height, uint64_t bytesPerPixel) {
    // A negative size gives a byte count for which every file is too short.
    if (std::min(width, height) < 0)
        return std::numeric_limits<uint64_t>::max();
    return static_cast<uint64_t>(width) * static_cast<uint64_t>(height) * bytesPerPixel;
}

}  // namespace

GLuint loadRawRGBTexture(const char* path, GLsizei width, GLsizei height) {
    const Pixels pixels = loadPixels(path, 0, byteCount(width, height, 3));
    if (pixels == nullptr)
        return 0;
    const GLuint texture = makeTexture(GL_RGB, width, height, pixels.get());
    if (texture == 0)
        Logger::instance().error("Failed to create GL texture.");
    return texture;
}

GLuint loadRawLuminanceTexture(const char* path, GLsizei size, int32_t offset) {
    const Pixels pixels = loadPixels(path, offset, byteCount(size, size, 1));
    if (pixels == nullptr)
        return 0;
    const GLuint texture = makeTexture(GL_LUMINANCE, size, size, pixels.get());
    // Traced, not logged: a font with many pages would fill the log.
    if (texture == 0)
        debugPrint("Failed to create GL texture.");
    return texture;
}
