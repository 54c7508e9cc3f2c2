// The shader sources that the build embeds from render/shaders/.
#pragma once

#include <cstddef>

struct EmbeddedShader {
    const char* fileName;
    const char* text;
};

extern const EmbeddedShader EMBEDDED_SHADERS[];
extern const std::size_t EMBEDDED_SHADER_COUNT;
