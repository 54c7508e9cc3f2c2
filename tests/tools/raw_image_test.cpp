// Pictures become squares of luminance.

#include "tools/raw_image.h"

#include <gtest/gtest.h>
#include <png.h>

namespace {

class RawImage : public ::testing::Test {
  protected:
    void writePng(uint32_t width, uint32_t height, uint32_t format,
                  const std::vector<uint8_t>& pixels) const {
        png_image picture{};
        picture.version = PNG_IMAGE_VERSION;
        picture.width = width;
        picture.height = height;
        picture.format = format;
        ASSERT_NE(png_image_write_to_file(&picture, path.c_str(), 0, pixels.data(), 0, nullptr), 0);
    }

    const std::string path = testing::TempDir() + "raw_image_test_" +
                             testing::UnitTest::GetInstance()->current_test_info()->name() + ".png";
    std::string error;
};

TEST_F(RawImage, PutsTheTopRowFirst) {
    writePng(3, 2, PNG_FORMAT_GRAY, {10, 20, 30, 40, 50, 60});
    const std::vector<uint8_t> expected = {10, 20, 30, 0, 40, 50, 60, 0, 0, 0, 0, 0, 0, 0, 0, 0};
    EXPECT_EQ(luminanceSquare(path, 4, error), expected) << error;
}

TEST_F(RawImage, TurnsColoursGreyAndTransparencyBlack) {
    writePng(3, 1, PNG_FORMAT_RGBA, {255, 255, 255, 255, 255, 255, 255, 0, 0, 255, 0, 255});
    const auto square = luminanceSquare(path, 3, error);
    ASSERT_TRUE(square) << error;
    EXPECT_EQ((*square)[0], 255);
    EXPECT_EQ((*square)[1], 0);
    EXPECT_GT((*square)[2], 150);  // green is a light colour
    EXPECT_LT((*square)[2], 255);
}

TEST_F(RawImage, RefusesWhatDoesNotFit) {
    writePng(3, 2, PNG_FORMAT_GRAY, {10, 20, 30, 40, 50, 60});
    EXPECT_FALSE(luminanceSquare(path, 2, error));
    EXPECT_EQ(error, path + ": 3 x 2 pixels, more than 2");
}

}  // namespace
