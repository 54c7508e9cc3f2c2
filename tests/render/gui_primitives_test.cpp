// Tests that shapes have their corners at the right coordinates. A wrong sign or half a line width
// is easily overlooked on the screen.

#include "render/gui_primitives.h"

#include <gtest/gtest.h>

#include <functional>

#include "tests/helpers/recording_gl.h"

namespace {

const std::string QUAD = "glDrawElements(4, 0 1 2 3 0 2)";
const std::string UNIT_SQUARE = "  1: 0 0 | 1 0 | 1 1 | 0 1";

TEST(GuiPrimitives, HaveTheirCornersAtTheRightCoordinates) {
    using Lines = std::vector<std::string>;
    RecordingGl& gl = RecordingGl::instance();
    const std::vector<GuiPoint> points = {{1, 2}, {-3, 4}};
    std::vector<GuiPoint> list = points;
    const std::pair<std::function<void()>, Lines> cases[] = {
        // An outline closes its corners.
        {[] {
             drawRectOutline({10, 20, 30, 40}, 0, 1, 1, 1, 1, 4);
         },
         {"glLineWidth(4)", "glDrawArrays(1, 0, 8)",
          "  0: 8 20 | 42 20 | 40 18 | 40 62 | 42 60 | 8 60 | 10 62 | 10 18",
          "  1: 1 1 1 | 1 1 1 | 1 1 1 | 1 1 1 | 1 1 1 | 1 1 1 | 1 1 1 | 1 1 1"}},
        {[] {
             drawHaloRect({100, 100, 140, 40}, 0, 1, 7);
         },
         {"glUniform1f(7, 2)", QUAD, "  0: 70 70 | 270 70 | 270 170 | 70 170", UNIT_SQUARE}},
        // The arrays are enabled by number, not by location.
        {[] {
             drawUnitTexturedRect({1, 2, 3, 4}, 1, 2);
         },
         {QUAD, "  0: not set | not set | not set | not set", "  1: 1 2 | 4 2 | 4 6 | 1 6"}},
        {[&] { drawPolyline(points, 0, 1, 1, 0, 0, 2.5F); },
         {"glLineWidth(2.5)", "glDrawArrays(3, 0, 2)", "  0: 1 2 | -3 4", "  1: 1 0 0 | 1 0 0"}},
        // A list is emptied, and then draws nothing.
        {[&] { drawLineList(list, 0, 1, 1, 0, 0, 2.5F); },
         {"glLineWidth(2.5)", "glDrawArrays(1, 0, 2)", "  0: 1 2 | -3 4", "  1: 1 0 0 | 1 0 0"}},
        {[&] { drawLineList(list, 0, 1, 1, 1, 1, 1); }, {}},
        {[] {
             drawLineList3D({{1, 2, 3.5F}, {4, 5, 6}}, 3, 9, 1, 0, 0.5F);
         },
         {"glUniform4f(9, 1, 0, 0.5, 1)", "glDrawArrays(1, 0, 2)", "  3: 1 2 3.5 | 4 5 6"}},
        {[] { drawLineList3D({}, 0, 1, 1, 1, 1); }, {}},
    };
    for (const auto& [draw, calls] : cases) {
        RecordingGl::reset();
        draw();
        EXPECT_EQ(gl.calls, calls);
        EXPECT_FALSE(gl.arrays[0].enabled || gl.arrays[1].enabled || gl.arrays[3].enabled);
    }
}

}  // namespace
