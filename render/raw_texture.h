// Textures from headerless pixel files: rows one after another from the top, without padding.
//
// The caller knows the size; the file does not tell it. A file that is too short is completed with
// zeros, but for a picture larger than any of the instrument's (12 MiB) memory is only taken when
// the file holds at least half of it.
//
// Both loaders leave the new texture bound and the unpack alignment at 1. The texture belongs to
// the caller. They return 0, and log why, when there is no such file, when it is shorter than that,
// and when there is not the memory for the picture.
#pragma once

#include <cstdint>

#include "platform/gles.h"

// Three bytes a pixel: red, green, blue. 0 also for a null path.
GLuint loadRawRGBTexture(const char* path, GLsizei width, GLsizei height);

// One byte a pixel, `size` pixels on a side, from byte `offset` of the file on. 0 also for a null
// path.
GLuint loadRawLuminanceTexture(const char* path, GLsizei size, int32_t offset);
