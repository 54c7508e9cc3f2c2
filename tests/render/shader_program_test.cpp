// Tests that shader sources reach the driver unchanged, and that a driver's compile errors are
// traced.

#include "render/shader_program.h"

#include <gtest/gtest.h>

#include "render/image_renderer.h"
#include "render/shader_source.h"
#include "tests/helpers/recording_gl.h"

namespace {

// Returns what is traced meanwhile.
template <typename Action>
std::string traceOf(Action action) {
    testing::internal::CaptureStderr();
    action();
    return testing::internal::GetCapturedStderr();
}

// The checksums detect any change, even an editor that trims blanks at line ends.
TEST(ShaderSource, IsUnchanged) {
    const std::pair<const char*, uint32_t> checksums[] = {
        {"fontrenderer.frag", 0x2E78B252},  {"fontrenderer.vert", 0x1B83E2EC},
        {"gui.frag", 0x7E1643D3},           {"gui.vert", 0x9756A7D9},
        {"imagerenderer.frag", 0x80F037FB}, {"imagerenderer.vert", 0x9822483F}};
    for (const auto& [name, checksum] : checksums) {
        const std::unique_ptr<char[]> source = getShaderSource(name);
        uint32_t sum = 0;
        for (const char character : std::string(source.get()))
            sum = sum * 31 + static_cast<unsigned char>(character);
        EXPECT_EQ(sum, checksum) << name;
    }
    for (const char* const absent : {"GUI.vert", "gui", "gui.vert ", ""})
        EXPECT_EQ(getShaderSource(absent), nullptr) << absent;
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
    EXPECT_EQ(gl.calls,
              (std::vector<std::string>{
                  "glCreateShader(35633)", "glShaderSource(1, 1, 1)", "glCompileShader(1)",
                  "glCreateShader(35632)", "glShaderSource(2, 2, 1)", "glCompileShader(2)",
                  "glCompileShader(1)", "glCompileShader(2)", "glAttachShader(3, 1)",
                  "glAttachShader(3, 2)", "glDeleteShader(1)", "glDeleteShader(2)",
                  "glLinkProgram(3)", "glUseProgram(0)"}));
    gl.compileStatus[GL_VERTEX_SHADER] = 0;
    EXPECT_EQ(traceOf(build), "0:1: bad 4\n");
    gl.compileStatus[GL_FRAGMENT_SHADER] = 0;
    EXPECT_EQ(traceOf(build), "0:1: bad 7\n0:1: bad 8\n0:1: bad 9\n");
    gl.infoLog = "";
    EXPECT_EQ(traceOf(build), "");
}

TEST_F(ShaderProgram, IsCachedEvenWhenItFailsToBuild) {
    ProgramCache cache;
    const GLuint program = getProgram(cache, "nonesuch");
    EXPECT_NE(program, 0U);
    EXPECT_EQ(gl.calls[0], "glCompileShader(0)");
    EXPECT_EQ(getProgram(cache, "nonesuch"), program);
    EXPECT_EQ(gl.callsOf("glLinkProgram").size(), 1U);
    gl.namesRunOut = true;
    EXPECT_EQ(getProgram(cache, "gui"), 0U);
    EXPECT_EQ(getProgram(cache, ""), 0U);
    EXPECT_EQ(getProgram(cache, nullptr), 0U);
    EXPECT_EQ(createProgram(nullptr), 0U);
    EXPECT_EQ(cache, (ProgramCache{{"gui", 0}, {"nonesuch", program}}));
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
