// Textures from raw pixel files without a header: rows from the top down, without padding.
//
// The caller passes the size. Pixels missing at the end of a short file become 0. A picture of more
// than 12 MiB, larger than any of the instrument's, is loaded only when its file holds at least
// half of it: a damaged size must not allocate much memory.
//
// Both loaders leave the new texture bound and the unpack alignment at 1; the caller owns the
// texture. They log an error and return 0 when the file is missing, when it holds less than half of
// a picture of that size, or when memory runs out.
#pragma once

#include <cstdint>

#include "platform/gles.h"

// Loads three bytes per pixel: red, green, blue. Returns 0 for a null path too.
GLuint loadRawRGBTexture(const char* path, GLsizei width, GLsizei height);

// Loads one byte per pixel, `size` pixels on each side, from byte `offset` of the file. Returns 0
// for a null path too.
GLuint loadRawLuminanceTexture(const char* path, GLsizei size, int32_t offset);
