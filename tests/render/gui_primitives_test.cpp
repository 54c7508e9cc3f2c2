// Tests that shapes have their corners at the right coordinates. A wrong sign or half a line width
// is easily overlooked on the screen.

#include "render/gui_primitives.h"

#include <gtest/gtest.h>

#include <functional>

#include "tests/helpers/recording_gl.h"

namespace {

using Lines = std::vector<std::string>;

const std::string QUAD = "glDrawElements(0 1 2 3 0 2)";
const std::string UNIT_SQUARE = "  1: 0 0 | 1 0 | 1 1 | 0 1";

TEST(GuiPrimitives, HaveTheirCornersAtTheRightCoordinates) {
    RecordingGl& gl = RecordingGl::instance();
    const std::vector<GuiPoint> points = {{1, 2}, {-3, 4}};
    std::vector<GuiPoint> list = points;
    struct Case {
        const char* what;
        std::function<void()> draw;
        Lines calls;
    };
    const Case cases[] = {
        {"an outline, which closes its corners",
         [] {
             drawRectOutline({10, 20, 30, 40}, 0, 1, 1.0F, 1.0F, 1.0F, 4.0F);
         },
         {"glLineWidth(4)", "glDrawArrays(lines, 0, 8)",
          "  0: 8 20 | 42 20 | 40 18 | 40 62 | 42 60 | 8 60 | 10 62 | 10 18",
          "  1: 1 1 1 | 1 1 1 | 1 1 1 | 1 1 1 | 1 1 1 | 1 1 1 | 1 1 1 | 1 1 1"}},
        {"a halo",
         [] {
             drawHaloRect({100, 100, 140, 40}, 0, 1, 7);
         },
         {"glUniform1f(7, 2)", QUAD, "  0: 70 70 | 270 70 | 270 170 | 70 170", UNIT_SQUARE}},
        {"a texture, whose arrays are enabled by number, not by location",
         [] {
             drawUnitTexturedRect({1, 2, 3, 4}, 1, 2);
         },
         {QUAD, "  0: not set | not set | not set | not set", "  1: 1 2 | 4 2 | 4 6 | 1 6"}},
        {"a polyline",
         [&] { drawPolyline(points, 0, 1, 1.0F, 0.0F, 0.0F, 2.5F); },
         {"glLineWidth(2.5)", "glDrawArrays(strip, 0, 2)", "  0: 1 2 | -3 4",
          "  1: 1 0 0 | 1 0 0"}},
        {"a list, which is emptied",
         [&] { drawLineList(list, 0, 1, 1.0F, 0.0F, 0.0F, 2.5F); },
         {"glLineWidth(2.5)", "glDrawArrays(lines, 0, 2)", "  0: 1 2 | -3 4",
          "  1: 1 0 0 | 1 0 0"}},
        {"lines with three coordinates, drawn from one array",
         [] {
             drawLineList3D({{1.0F, 2.0F, 3.5F}, {4.0F, 5.0F, 6.0F}}, 3, 9, 1.0F, 0.0F, 0.5F);
         },
         {"glUniform4f(9, 1, 0, 0.5, 1)", "glDrawArrays(lines, 0, 2)", "  3: 1 2 3.5 | 4 5 6"}},
        {"nothing",
         [&] {
             drawPolyline({}, 0, 1, 1.0F, 1.0F, 1.0F, 1.0F);
             drawLineList(list, 0, 1, 1.0F, 1.0F, 1.0F, 1.0F);
             drawLineList3D({}, 0, 1, 1.0F, 1.0F, 1.0F);
         },
         {}},
    };
    for (const Case& test : cases) {
        SCOPED_TRACE(test.what);
        RecordingGl::reset();
        test.draw();
        EXPECT_EQ(gl.calls, test.calls);
        EXPECT_FALSE(gl.arrays[0].enabled || gl.arrays[1].enabled || gl.arrays[3].enabled);
    }
}

}  // namespace
