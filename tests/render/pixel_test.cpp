// What is drawn, pixel by pixel, on the GL of this machine and without a display.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>

#include "render/font_renderer.h"
#include "render/gui_primitives.h"
#include "render/image_renderer.h"
#include "render/matrix.h"
#include "render/raw_texture.h"
#include "render/shader_program.h"
#include "support/system_settings.h"
#include "tests/support/device_folder.h"
#include "tests/support/font_bytes.h"
#include "tests/support/offscreen_context.h"

namespace {

constexpr EGLint SIDE = 64;
constexpr std::size_t SIZE = SIDE;

// 0xRRGGBB by row from the top and by column.
using Image = std::array<std::array<unsigned, SIZE>, SIZE>;

void fill(Image& image, std::size_t x, std::size_t y, std::size_t width, std::size_t height,
          unsigned color) {
    for (std::size_t row = y; row < y + height; ++row)
        std::fill_n(&image[row][x], width, color);
}

Image drawnImage() {
    std::array<unsigned char, SIZE * SIZE * 4> bytes{};
    glReadPixels(0, 0, SIDE, SIDE, GL_RGBA, GL_UNSIGNED_BYTE, bytes.data());
    Image image{};
    for (std::size_t i = 0; i < SIZE * SIZE; ++i)
        image[SIZE - 1 - i / SIZE][i % SIZE] =
            static_cast<unsigned>(bytes[i * 4] << 16 | bytes[i * 4 + 1] << 8 | bytes[i * 4 + 2]);
    return image;
}

void expectDrawn(const Image& expected) {
    const Image drawn = drawnImage();
    for (std::size_t y = 0; y < SIZE; ++y)
        for (std::size_t x = 0; x < SIZE; ++x)
            ASSERT_EQ(drawn[y][x], expected[y][x]) << "at " << x << ", " << y;
}

class Pixels : public testing::Test {
  protected:
    static void SetUpTestSuite() { ASSERT_TRUE(makeOffscreenContext(SIDE, SIDE)); }

    Pixels() {
        orthoMatrix(0, SIDE, SIDE, 0, -1, 1, downwards.data());
        orthoMatrix(0, SIDE, 0, SIDE, -1, 1, upwards.data());
        glClearColor(0.0F, 0.0F, 0.0F, 0.0F);
        glClear(GL_COLOR_BUFFER_BIT);
        SystemSettings::instance().dataFolder = "/";
    }

    ~Pixels() override { EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR)); }

    // A face "F" whose page has the coverage 255 in its upper half and 50 in its lower half.
    void writeFace(const std::vector<Glyph>& glyphs, const std::string& kerning = "") const {
        device.write("/fonts/F.fnt", fontBytes(16, 32, glyphs, kerning));
        device.write("/fonts/page.raw", std::string(512, '\xFF') + std::string(512, '\x32'));
    }

    void drawText(FontRenderer::WideText text, int x, int y) const {
        const FontRenderer face("F", nullptr);
        glEnable(GL_BLEND);
        glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
        face.drawText(text, x, y, 1.0F, 1.0F, 1.0F, downwards.data(), true, nullptr);
        glDisable(GL_BLEND);
    }

    DeviceFolder device;
    Image expected{};
    std::array<float, 16> downwards{};
    std::array<float, 16> upwards{};
};

TEST_F(Pixels, GlyphsStandWhereTheTextSays) {
    writeFace({{'A', 4, 4, 5, 7, 9, 2, 8, 0, 15},
               {'V', 4, 4, 6, 4, 9, 5, 8, 0, 15},
               {0x30A2, 4, 4, 9, 3, 9, 0, 12, 0, 15}},
              kerningRecord('A', 'V', -2));
    drawText(TEXT("AV\u30A2A"), 10, 20);
    fill(expected, 10, 22, 5, 7, 0xFFFFFF);
    fill(expected, 16, 25, 6, 4, 0xFFFFFF);  // kerned by 2, which does not move what follows
    fill(expected, 26, 20, 6, 3, 0xFFFFFF);  // narrowed from 9, its advance from 12 to 8
    fill(expected, 34, 22, 5, 7, 0xFFFFFF);
    expectDrawn(expected);
}

TEST_F(Pixels, CoverageIsDoubledAndBlended) {
    writeFace({{'A', 4, 22, 4, 4, 0, 0, 6, 0, 15}});
    glClearColor(0.0F, 0.0F, 1.0F, 0.0F);
    glClear(GL_COLOR_BUFFER_BIT);
    drawText(TEXT("A"), 10, 10);
    fill(expected, 0, 0, SIZE, SIZE, 0x0000FF);
    fill(expected, 10, 10, 4, 4, 0x6464FF);
    expectDrawn(expected);
}

TEST_F(Pixels, FilledRectFillsItsPixels) {
    const GLuint program = getProgram(programCache(), "gui");
    glUseProgram(program);
    glUniformMatrix4fv(getUniformLocation(program, "prmtx"), 1, GL_FALSE, upwards.data());
    drawFilledRect({10, 40, 20, 15}, glGetAttribLocation(program, "a_position"),
                   glGetAttribLocation(program, "a_colors"), 0.0F, 1.0F, 0.0F);
    fill(expected, 10, 9, 20, 15, 0x00FF00);
    expectDrawn(expected);
}

TEST_F(Pixels, ImageHasItsFirstRowAtTheTextureCoordinateZero) {
    const ImageRenderer image;
    device.write("/i.raw", "\x40\x40\xC0\xC0");
    const GLuint texture = loadRawLuminanceTexture("/i.raw", 2, 0);
    glUseProgram(image.program);
    glUniformMatrix4fv(getUniformLocation(image.program, "prmtx"), 1, GL_FALSE, upwards.data());
    glBindTexture(GL_TEXTURE_2D, texture);
    glUniform1i(image.samplerLocation, 0);
    drawUnitTexturedRect({30, 20, 2, 2}, image.positionLocation, image.texCoordLocation);
    fill(expected, 30, 42, 2, 1, 0xC0C0C0);
    fill(expected, 30, 43, 2, 1, 0x404040);
    expectDrawn(expected);
}

}  // namespace
