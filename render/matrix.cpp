#include "render/matrix.h"

#include <algorithm>

void identityMatrix(float* m) {
    std::fill_n(m, 16, 0.0F);
    m[0] = m[5] = m[10] = m[15] = 1.0F;
}

void orthoMatrix(float left, float right, float bottom, float top, float nearPlane, float farPlane,
                 float* m) {
    std::fill_n(m, 16, 0.0F);
    m[0] = 2.0F / (right - left);
    m[5] = 2.0F / (top - bottom);
    m[10] = -2.0F / (farPlane - nearPlane);
    m[12] = -(right + left) / (right - left);
    m[13] = -(top + bottom) / (top - bottom);
    m[14] = -(farPlane + nearPlane) / (farPlane - nearPlane);
    m[15] = 1.0F;
}
