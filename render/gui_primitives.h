// Flat-coloured shapes, drawn with the "gui" program or one with the same inputs. The instrument's
// programs share them; the updater itself draws only filled rectangles.
//
// The caller binds the program and sets "prmtx" first. Coordinates are pixels of that projection,
// colours are 0 to 1. The attribute arrays 0 (position) and 1 (second attribute) are enabled for
// the draw call and disabled after it. An empty list of points draws nothing.
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

// Draws the four edges as lines of `lineWidth` pixels, extended so that they meet at the corners.
void drawRectOutline(const GuiRect& rect, GLint positionLocation, GLint colorLocation, float red,
                     float green, float blue, float lineWidth);

// Draws the rectangle enlarged by the halo, for the "halo" program. The texture coordinates run
// from 0 to 1; the uniform at `aspectLocation` is set to the enlarged rectangle's width divided by
// its height.
void drawHaloRect(const GuiRect& rect, GLint positionLocation, GLint texCoordLocation,
                  GLint aspectLocation);

// Draws the rectangle with texture coordinates from 0 to 1.
void drawUnitTexturedRect(const GuiRect& rect, GLint positionLocation, GLint texCoordLocation);

// Draws one line through all points.
void drawPolyline(const std::vector<GuiPoint>& points, GLint positionLocation, GLint colorLocation,
                  float red, float green, float blue, float lineWidth);

// Draws a line for every two points and clears the list: callers fill it again for every frame.
void drawLineList(std::vector<GuiPoint>& points, GLint positionLocation, GLint colorLocation,
                  float red, float green, float blue, float lineWidth);

// Draws a line for every two points in space, in the colour that it sets in the vec4 uniform at
// `colorUniform`. Only the array at `positionLocation` is enabled.
void drawLineList3D(const std::vector<GuiPoint3D>& points, GLint positionLocation,
                    GLint colorUniform, float red, float green, float blue);
