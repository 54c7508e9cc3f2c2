#include "render/image_renderer.h"

#include "render/shader_program.h"

ImageRenderer::ImageRenderer() : program(getProgram(programCache(), "imagerenderer")) {
    positionLocation = glGetAttribLocation(program, "a_position");
    texCoordLocation = glGetAttribLocation(program, "a_texCoord");
    samplerLocation = glGetUniformLocation(program, "s_texture");
    iconColorLocation = glGetUniformLocation(program, "u_iconColor");
}
