// The GL program that draws a texture, and the locations of its inputs.
#pragma once

#include "platform/gles.h"
#include "render/renderer.h"

// The caller draws: it binds `program`, sets "prmtx" and the sampler, supplies the two attributes
// and draws a quad. Images are opaque, so blending must be off.
class ImageRenderer : public Renderer {
  public:
    // Needs the GL context. The program comes from the program cache and outlives this object.
    ImageRenderer();

    GLuint program;
    GLint samplerLocation = 0;
    GLint positionLocation = -1;
    GLint texCoordLocation = -1;
    GLint iconColorLocation = 0;  // for tinting programs: -1 with the image program
};
