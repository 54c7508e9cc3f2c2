// Tests that shader sources reach the driver unchanged, and that a driver's compile errors are
// traced.

#include "render/shader_program.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "render/image_renderer.h"
#include "render/shader_source.h"
#include "tests/helpers/device_folder.h"
#include "tests/helpers/recording_gl.h"

namespace {

// Returns what is traced meanwhile.
template <typename Action>
std::string traceOf(Action action) {
    testing::internal::CaptureStderr();
    action();
    return testing::internal::GetCapturedStderr();
}

// The sizes detect an editor that trims blanks at line ends.
TEST(ShaderSource, IsTheFileByteForByte) {
    const std::pair<const char*, std::size_t> sizes[] = {
        {"fontrenderer.frag", 780}, {"fontrenderer.vert", 375},  {"gui.frag", 142},
        {"gui.vert", 362},          {"imagerenderer.frag", 271}, {"imagerenderer.vert", 375}};
    for (const auto& [name, size] : sizes) {
        std::ifstream file(std::string(SHADER_FOLDER) + name, std::ios::binary);
        const std::string text{std::istreambuf_iterator<char>(file), {}};
        EXPECT_EQ(text.size(), size) << name;
        EXPECT_EQ(getShaderSource(name).get(), text) << name;
    }
    for (const char* const absent : {"GUI.vert", "gui", "gui.vert ", ""})
        EXPECT_EQ(getShaderSource(absent), nullptr) << absent;
}

TEST(ShaderSource, CanBeReadFromAFile) {
    const DeviceFolder device;
    device.write("HarrierPrototype/shaders/x", "text");
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(device.root());
    const std::unique_ptr<char[]> text = loadShaderFile("x");
    EXPECT_EQ(loadShaderFile("y"), nullptr);
    std::filesystem::current_path(before);
    EXPECT_STREQ(text.get(), "text");
}

class ShaderProgram : public testing::Test {
  protected:
    ShaderProgram() { RecordingGl::reset(); }

    RecordingGl& gl = RecordingGl::instance();
};

// A link failure after two successful compiles is not reported, and an empty log is not printed.
TEST_F(ShaderProgram, TracesTheDriversLogOnlyAfterAFailedCompile) {
    const auto build = [] { createProgram("gui"); };
    gl.infoLog = "0:1: bad";
    EXPECT_EQ(traceOf(build), "");
    gl.compileStatus[GL_VERTEX_SHADER] = 0;
    EXPECT_EQ(traceOf(build), "0:1: bad\n");
    EXPECT_TRUE(gl.callsOf("glGetProgramInfoLog").empty());
    gl.compileStatus[GL_FRAGMENT_SHADER] = 0;
    EXPECT_EQ(traceOf(build), "0:1: bad\n0:1: bad\n0:1: bad\n");
    EXPECT_EQ(gl.callsOf("glGetProgramInfoLog").size(), 1U);
    gl.infoLog = "";
    EXPECT_EQ(traceOf(build), "");
}

TEST_F(ShaderProgram, IsCachedEvenWhenItFailsToBuild) {
    ProgramCache cache;
    const GLuint program = getProgram(cache, "nonesuch");
    EXPECT_NE(program, 0U);
    EXPECT_EQ(gl.callsOf("glCreateShader").size() + gl.callsOf("glShaderSource").size(), 0U);
    EXPECT_EQ(gl.callsOf("glCompileShader").size(), 2U);
    EXPECT_EQ(gl.callsOf("glDeleteShader").size(), 2U);
    EXPECT_EQ(getProgram(cache, "nonesuch"), program);
    EXPECT_EQ(gl.callsOf("glLinkProgram").size(), 1U);
    EXPECT_EQ(getProgram(cache, ""), 0U);
    EXPECT_EQ(getProgram(cache, nullptr), 0U);
    EXPECT_EQ(createProgram(nullptr), 0U);
    EXPECT_EQ(cache, (ProgramCache{{"nonesuch", program}}));
}

TEST_F(ShaderProgram, MissingUniformIsReportedButNotByImageRenderer) {
    EXPECT_EQ(traceOf([] {
                  const ImageRenderer renderer;
                  EXPECT_EQ(renderer.program, getProgram(programCache(), "imagerenderer"));
                  EXPECT_EQ(renderer.samplerLocation, 4);
                  EXPECT_EQ(renderer.positionLocation, 2);
                  EXPECT_EQ(renderer.texCoordLocation, 3);
                  EXPECT_EQ(renderer.iconColorLocation, -1);
              }),
              "");
    EXPECT_EQ(traceOf([] {
                  EXPECT_EQ(getUniformLocation(1, "u_iconColor"), -1);
                  EXPECT_EQ(getUniformLocation(1, "prmtx"), 2);
              }),
              "No such uniform named \"u_iconColor\"\n");
}

}  // namespace
