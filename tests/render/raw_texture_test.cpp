// Tests that a picture which is truncated, missing or of an absurd size neither crashes the program
// nor exhausts its memory.

#include "render/raw_texture.h"

#include <gtest/gtest.h>

#include <numeric>

#include "support/logger.h"
#include "tests/helpers/log_text.h"
#include "tests/helpers/recording_gl.h"

namespace {

class RawTexture : public testing::Test {
  protected:
    RawTexture() {
        RecordingGl::reset();
        Logger::instance().setPath("/log.txt");
    }

    std::string logged() const { return logMessages(device, "log.txt"); }

    DeviceFolder device;
    RecordingGl& gl = RecordingGl::instance();
};

TEST_F(RawTexture, LuminanceIsReadFromAnOffset) {
    std::string bytes(40, '\0');
    std::iota(bytes.begin(), bytes.end(), '\0');
    device.write("/i.raw", bytes);
    EXPECT_EQ(loadRawLuminanceTexture("/i.raw", 4, 16), 1U);
    EXPECT_EQ(gl.texturePixels[1],
              (std::vector<unsigned char>(bytes.begin() + 16, bytes.begin() + 32)));
}

TEST_F(RawTexture, AShortFileIsFilledUpWithZeros) {
    device.write("/i.raw", "abcd");
    const GLuint texture = loadRawRGBTexture("/i.raw", 1, 2);
    EXPECT_EQ(gl.texturePixels[texture], (std::vector<unsigned char>{'a', 'b', 'c', 'd', 0, 0}));
    const GLuint beyondEnd = loadRawLuminanceTexture("/i.raw", 2, 100);
    EXPECT_EQ(gl.texturePixels[beyondEnd], std::vector<unsigned char>(4, 0));
}

TEST_F(RawTexture, IsNotCreatedForAMissingFileOrAnAbsurdSize) {
    device.write("/i.raw", "abcd");
    const char* const missing[] = {"/no.raw", nullptr};
    for (const char* const path : missing) {
        EXPECT_EQ(loadRawLuminanceTexture(path, 4, 0), 0U);
        EXPECT_EQ(loadRawRGBTexture(path, 4, 4), 0U);
    }
    EXPECT_EQ(loadRawLuminanceTexture("/i.raw", 65535, 100), 0U);
    EXPECT_EQ(loadRawRGBTexture("/i.raw", 0x7FFFFFFF, 0x7FFFFFFF), 0U);
    EXPECT_EQ(loadRawRGBTexture("/i.raw", -1, -1), 0U);
    EXPECT_TRUE(gl.calls.empty());
    const std::string notFound = "\n    *** ERROR *** File /no.raw not found.\n\n";
    const std::string tooShort = "\n    *** ERROR *** File /i.raw is too short.\n\n";
    EXPECT_EQ(logged(), notFound + notFound + tooShort + tooShort + tooShort);
}

TEST_F(RawTexture, OnlyTheRgbLoaderLogsAFailedTexture) {
    device.write("/i.raw", "abc");
    gl.texturesRunOut = true;
    testing::internal::CaptureStderr();
    EXPECT_EQ(loadRawLuminanceTexture("/i.raw", 1, 0), 0U);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Failed to create GL texture.\n");
    EXPECT_EQ(logged(), "");
    EXPECT_EQ(loadRawRGBTexture("/i.raw", 1, 1), 0U);
    EXPECT_EQ(logged(), "\n    *** ERROR *** Failed to create GL texture.\n\n");
    EXPECT_TRUE(gl.callsOf("glBindTexture").empty());
}

}  // namespace
