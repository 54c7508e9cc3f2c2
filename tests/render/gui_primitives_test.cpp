#include "render/gui_primitives.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/support/recording_gl.h"

namespace {

using Lines = std::vector<std::string>;

class GuiPrimitives : public testing::Test {
  protected:
    GuiPrimitives() { RecordingGl::reset(); }

    // The lines from the draw call on, as far as they tell what was drawn.
    Lines drawn() const {
        const auto begins = [](const char* start) {
            return [start](const std::string& call) { return call.rfind(start, 0) == 0; };
        };
        const auto first = std::find_if(gl.calls.begin(), gl.calls.end(), begins("glDraw"));
        return {first, std::find_if(first, gl.calls.end(), begins("glDisable"))};
    }

    const std::string quad = "glDrawElements(GL_TRIANGLES, GL_UNSIGNED_SHORT, 0 1 2 3 0 2)";
    const GuiRect rect = {135, 529, 112, 36};
    RecordingGl& gl = RecordingGl::instance();
};

TEST_F(GuiPrimitives, FilledRect) {
    drawFilledRect(rect, 0, 1, 0.0F, 1.0F, 0.5F);
    const Lines expected = {
        "glVertexAttribPointer(0, 2, GL_INT, 0, 0)",
        "glVertexAttribPointer(1, 3, GL_FLOAT, 0, 0)",
        "glEnableVertexAttribArray(0)",
        "glEnableVertexAttribArray(1)",
        quad,
        "  0: 135 529 | 247 529 | 247 565 | 135 565",
        "  1: 0 1 0.5 | 0 1 0.5 | 0 1 0.5 | 0 1 0.5",
        "glDisableVertexAttribArray(0)",
        "glDisableVertexAttribArray(1)",
    };
    EXPECT_EQ(gl.calls, expected);
}

TEST_F(GuiPrimitives, OutlineClosesItsCorners) {
    drawRectOutline({10, 20, 30, 40}, 0, 1, 1.0F, 1.0F, 1.0F, 4.0F);
    EXPECT_EQ(gl.calls.front(), "glLineWidth(4)");
    EXPECT_EQ(drawn()[0], "glDrawArrays(GL_LINES, 0, 8)");
    EXPECT_EQ(drawn()[1], "  0: 8 20 | 42 20 | 40 18 | 40 62 | 42 60 | 8 60 | 10 62 | 10 18");
}

TEST_F(GuiPrimitives, TexturedRects) {
    const std::string texCoords = "  1: 0 0 | 1 0 | 1 1 | 0 1";
    drawHaloRect({100, 100, 140, 40}, 0, 1, 7);
    EXPECT_EQ(gl.calls.front(), "glUniform1f(7, 2)");
    EXPECT_EQ(drawn(), (Lines{quad, "  0: 70 70 | 270 70 | 270 170 | 70 170", texCoords}));
    RecordingGl::reset();
    drawUnitTexturedRect(rect, 0, 1);
    EXPECT_EQ(drawn(), (Lines{quad, "  0: 135 529 | 247 529 | 247 565 | 135 565", texCoords}));
}

TEST_F(GuiPrimitives, Lines) {
    std::vector<GuiPoint> points = {{1, 2}, {-3, 4}};
    const Lines vertices = {"  0: 1 2 | -3 4", "  1: 1 0 0 | 1 0 0"};
    drawPolyline(points, 0, 1, 1.0F, 0.0F, 0.0F, 2.5F);
    EXPECT_EQ(gl.calls.front(), "glLineWidth(2.5)");
    EXPECT_EQ(drawn(), (Lines{"glDrawArrays(GL_LINE_STRIP, 0, 2)", vertices[0], vertices[1]}));
    EXPECT_EQ(points.size(), 2U);
    RecordingGl::reset();
    drawLineList(points, 0, 1, 1.0F, 0.0F, 0.0F, 2.5F);
    EXPECT_EQ(drawn(), (Lines{"glDrawArrays(GL_LINES, 0, 2)", vertices[0], vertices[1]}));
    EXPECT_TRUE(points.empty());
}

TEST_F(GuiPrimitives, LinesInSpaceUseOneArrayOfTheirOwn) {
    drawLineList3D({{1.0F, 2.0F, 3.5F}, {4.0F, 5.0F, 6.0F}}, 3, 9, 1.0F, 0.0F, 0.5F);
    EXPECT_EQ(gl.calls.front(), "glUniform4f(9, 1, 0, 0.5, 1)");
    EXPECT_EQ(drawn(), (Lines{"glDrawArrays(GL_LINES, 0, 2)", "  3: 1 2 3.5 | 4 5 6"}));
    EXPECT_EQ(gl.calls.back(), "glDisableVertexAttribArray(3)");
}

TEST_F(GuiPrimitives, EmptyListsDrawNothing) {
    std::vector<GuiPoint> none;
    drawPolyline(none, 0, 1, 1.0F, 1.0F, 1.0F, 1.0F);
    drawLineList(none, 0, 1, 1.0F, 1.0F, 1.0F, 1.0F);
    drawLineList3D({}, 0, 1, 1.0F, 1.0F, 1.0F);
    EXPECT_TRUE(gl.calls.empty());
}

}  // namespace
