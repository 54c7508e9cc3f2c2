// The GL program that shows a texture, and where its inputs are.
#pragma once

#include "platform/gles.h"
#include "render/renderer.h"

// Holds what is needed to draw an image quad and leaves the drawing to its user: bind `program`,
// set "prmtx" and the sampler, feed the two attributes, draw. Images are opaque: blending off.
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
