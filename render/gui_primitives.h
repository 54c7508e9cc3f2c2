// Flat-coloured shapes of the screens, drawn with the "gui" program or one with the same inputs.
//
// The caller binds the program and sets "prmtx" first. Coordinates are pixels of that projection,
// colours 0 to 1. The attribute arrays 0 (position) and 1 (second attribute) are enabled for the
// draw and disabled after it. Empty point lists draw nothing.
#pragma once

#include <cstdint>
#include <vector>

#include "platform/gles.h"

struct GuiRect {
    int32_t x;
    int32_t y;
    int32_t width;
    int32_t height;
};

struct GuiPoint {
    int32_t x;
    int32_t y;
};

struct GuiPoint3D {
    float x;
    float y;
    float z;
};

void drawFilledRect(const GuiRect& rect, GLint positionLocation, GLint colorLocation, float red,
                    float green, float blue);

// The four edges as lines `lineWidth` pixels wide, long enough that the corners close.
void drawRectOutline(const GuiRect& rect, GLint positionLocation, GLint colorLocation, float red,
                     float green, float blue, float lineWidth);

// For the "halo" program: the rectangle grown by the halo, with texture coordinates of 0 to 1, and
// its width by its height in the uniform at `aspectLocation`.
void drawHaloRect(const GuiRect& rect, GLint positionLocation, GLint texCoordLocation,
                  GLint aspectLocation);

// The rectangle with texture coordinates of 0 to 1.
void drawUnitTexturedRect(const GuiRect& rect, GLint positionLocation, GLint texCoordLocation);

// One line through all points.
void drawPolyline(const std::vector<GuiPoint>& points, GLint positionLocation, GLint colorLocation,
                  float red, float green, float blue, float lineWidth);

// A line for every two points; clears the list, which its users fill anew for every frame.
void drawLineList(std::vector<GuiPoint>& points, GLint positionLocation, GLint colorLocation,
                  float red, float green, float blue, float lineWidth);

// A line for every two points in space, with the colour in the vec4 uniform at `colorUniform`. The
// only array that is enabled is that at `positionLocation`.
void drawLineList3D(const std::vector<GuiPoint3D>& points, GLint positionLocation,
                    GLint colorUniform, float red, float green, float blue);
