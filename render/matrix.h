// 4x4 float matrices in column order, as glUniformMatrix4fv takes them.
#pragma once

// Fills the 16 floats at `m` with the identity.
void identityMatrix(float* m);

// Fills the 16 floats at `m` with the orthographic projection of the given box. When `bottom` is
// greater than `top`, y grows downwards.
void orthoMatrix(float left, float right, float bottom, float top, float nearPlane, float farPlane,
                 float* m);
