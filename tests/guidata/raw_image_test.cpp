// Whether a picture becomes the square that the device draws: rows upside down or a wrong side
// shear the background.

#include "tools/guidata/raw_image.h"

#include <gtest/gtest.h>
#include <png.h>

#include "tests/helpers/device_folder.h"

namespace {

TEST(RawImage, IsASquareOfGreysWithTheTopRowFirst) {
    struct Case {
        uint32_t height;
        uint32_t format;
        std::vector<uint8_t> pixels;  // of three columns
        int side;
        std::vector<uint8_t> square;  // empty: refused
    };
    const Case cases[] = {
        {2,
         PNG_FORMAT_GRAY,
         {10, 20, 30, 40, 50, 60},
         4,
         {10, 20, 30, 0, 40, 50, 60, 0, 0, 0, 0, 0, 0, 0, 0, 0}},
        // Transparency is black.
        {1,
         PNG_FORMAT_RGBA,
         {255, 255, 255, 255, 255, 255, 255, 0, 0, 0, 0, 255},
         3,
         {255, 0, 0, 0, 0, 0, 0, 0, 0}},
        {2, PNG_FORMAT_GRAY, {10, 20, 30, 40, 50, 60}, 2, {}},
    };
    const DeviceFolder work;
    const std::string path = work.root() / "picture.png";
    for (const Case& test : cases) {
        png_image picture{};
        picture.version = PNG_IMAGE_VERSION;
        picture.width = 3;
        picture.height = test.height;
        picture.format = test.format;
        const void* const pixels = test.pixels.data();
        ASSERT_NE(png_image_write_to_file(&picture, path.c_str(), 0, pixels, 0, nullptr), 0);
        std::string error;
        EXPECT_EQ(luminanceSquare(path, test.side, error).value_or(std::vector<uint8_t>()),
                  test.square);
        EXPECT_EQ(error, test.square.empty() ? path + ": 3 x 2 pixels, more than 2" : "");
    }
}

}  // namespace
