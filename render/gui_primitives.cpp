#include "render/gui_primitives.h"

#include <array>
#include <cmath>

namespace {

constexpr int32_t HALO_WIDTH = 30;

// The arrays are enabled by these numbers, while the pointers are set by location. It works because
// in every program with these inputs the position is at location 0 and the second attribute at 1.
// Kept.
constexpr GLuint POSITION_ARRAY = 0;
constexpr GLuint SECOND_ARRAY = 1;

constexpr GLushort QUAD_INDICES[] = {0, 1, 2, 3, 0, 2};
constexpr GLsizei QUAD_INDEX_COUNT = 6;
constexpr GLfloat UNIT_TEXCOORDS[] = {0.0F, 0.0F, 1.0F, 0.0F, 1.0F, 1.0F, 0.0F, 1.0F};

using Corners = std::array<GuiPoint, 4>;

struct Color {
    GLfloat red;
    GLfloat green;
    GLfloat blue;
};

Corners cornersOf(const GuiRect& rect) {
    return {{{rect.x, rect.y},
             {rect.x + rect.width, rect.y},
             {rect.x + rect.width, rect.y + rect.height},
             {rect.x, rect.y + rect.height}}};
}

void setPositions(GLint location, const GuiPoint* points) {
    glVertexAttribPointer(static_cast<GLuint>(location), 2, GL_INT, GL_FALSE, 0, points);
}

void setColors(GLint location, const Color* colors) {
    glVertexAttribPointer(static_cast<GLuint>(location), 3, GL_FLOAT, GL_FALSE, 0, colors);
}

void enableArrays() {
    glEnableVertexAttribArray(POSITION_ARRAY);
    glEnableVertexAttribArray(SECOND_ARRAY);
}

void disableArrays() {
    glDisableVertexAttribArray(POSITION_ARRAY);
    glDisableVertexAttribArray(SECOND_ARRAY);
}

void drawQuad() {
    enableArrays();
    glDrawElements(GL_TRIANGLES, QUAD_INDEX_COUNT, GL_UNSIGNED_SHORT, QUAD_INDICES);
    disableArrays();
}

void drawLines(GLenum mode, const std::vector<GuiPoint>& points, GLint positionLocation,
               GLint colorLocation, const Color& color, float lineWidth) {
    if (points.empty())
        return;
    const std::vector<Color> colors(points.size(), color);
    glLineWidth(lineWidth);
    setPositions(positionLocation, points.data());
    setColors(colorLocation, colors.data());
    enableArrays();
    glDrawArrays(mode, 0, static_cast<GLsizei>(points.size()));
    disableArrays();
}

}  // namespace

void drawFilledRect(const GuiRect& rect, GLint positionLocation, GLint colorLocation, float red,
                    float green, float blue) {
    const Corners corners = cornersOf(rect);
    const Color color = {red, green, blue};
    const Color colors[] = {color, color, color, color};
    setPositions(positionLocation, corners.data());
    setColors(colorLocation, colors);
    drawQuad();
}

void drawRectOutline(const GuiRect& rect, GLint positionLocation, GLint colorLocation, float red,
                     float green, float blue, float lineWidth) {
    const int32_t half = static_cast<int32_t>(std::ceil(lineWidth / 2.0F));
    const int32_t left = rect.x;
    const int32_t right = rect.x + rect.width;
    const int32_t bottom = rect.y;
    const int32_t top = rect.y + rect.height;
    const std::vector<GuiPoint> edges = {
        {left - half, bottom}, {right + half, bottom}, {right, bottom - half},
        {right, top + half},   {right + half, top},    {left - half, top},
        {left, top + half},    {left, bottom - half},
    };
    drawLines(GL_LINES, edges, positionLocation, colorLocation, {red, green, blue}, lineWidth);
}

void drawHaloRect(const GuiRect& rect, GLint positionLocation, GLint texCoordLocation,
                  GLint aspectLocation) {
    const GuiRect grown = {rect.x - HALO_WIDTH, rect.y - HALO_WIDTH, rect.width + 2 * HALO_WIDTH,
                           rect.height + 2 * HALO_WIDTH};
    glUniform1f(aspectLocation, static_cast<float>(grown.width) / static_cast<float>(grown.height));
    drawUnitTexturedRect(grown, positionLocation, texCoordLocation);
}

void drawUnitTexturedRect(const GuiRect& rect, GLint positionLocation, GLint texCoordLocation) {
    const Corners corners = cornersOf(rect);
    setPositions(positionLocation, corners.data());
    glVertexAttribPointer(static_cast<GLuint>(texCoordLocation), 2, GL_FLOAT, GL_FALSE, 0,
                          UNIT_TEXCOORDS);
    drawQuad();
}

void drawPolyline(const std::vector<GuiPoint>& points, GLint positionLocation, GLint colorLocation,
                  float red, float green, float blue, float lineWidth) {
    drawLines(GL_LINE_STRIP, points, positionLocation, colorLocation, {red, green, blue},
              lineWidth);
}

void drawLineList(std::vector<GuiPoint>& points, GLint positionLocation, GLint colorLocation,
                  float red, float green, float blue, float lineWidth) {
    drawLines(GL_LINES, points, positionLocation, colorLocation, {red, green, blue}, lineWidth);
    points.clear();
}

void drawLineList3D(const std::vector<GuiPoint3D>& points, GLint positionLocation,
                    GLint colorUniform, float red, float green, float blue) {
    if (points.empty())
        return;
    const GLuint position = static_cast<GLuint>(positionLocation);
    glUniform4f(colorUniform, red, green, blue, 1.0F);
    glVertexAttribPointer(position, 3, GL_FLOAT, GL_FALSE, 0, points.data());
    glEnableVertexAttribArray(position);
    glDrawArrays(GL_LINES, 0, static_cast<GLsizei>(points.size()));
    glDisableVertexAttribArray(position);
}
