// Tests that a picture which is truncated, missing or of an absurd size neither crashes the program
// nor exhausts its memory.

#include "render/raw_texture.h"

#include <gtest/gtest.h>

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

TEST_F(RawTexture, HoldsTheFileFromItsOffsetAndThenZeros) {
    device.write("/i.raw", "0123456789abcdef");
    const auto pixels = [&](GLuint texture) {
        const std::vector<unsigned char>& bytes = gl.texturePixels[texture];
        return std::string(bytes.begin(), bytes.end());
    };
    EXPECT_EQ(pixels(loadRawLuminanceTexture("/i.raw", 3, 4)), "456789abc");
    EXPECT_EQ(gl.calls.back(), "glTexImage2D(6409, 3, 3, 6409)");
    EXPECT_EQ(pixels(loadRawLuminanceTexture("/i.raw", 2, 14)), std::string("ef\0\0", 4));
    EXPECT_EQ(pixels(loadRawLuminanceTexture("/i.raw", 1, 100)), std::string(1, '\0'));
    gl.calls.clear();
    EXPECT_EQ(pixels(loadRawRGBTexture("/i.raw", 3, 2)), std::string("0123456789abcdef\0\0", 18));
    EXPECT_EQ(gl.calls, (std::vector<std::string>{
                            "glPixelStorei(3317, 1)", "glGenTextures(1)", "glBindTexture(4)",
                            "glTexParameteri(10241, 9729)", "glTexParameteri(10240, 9729)",
                            "glTexImage2D(6407, 3, 2, 6407)"}));
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
    gl.namesRunOut = true;
    testing::internal::CaptureStderr();
    EXPECT_EQ(loadRawLuminanceTexture("/i.raw", 1, 0), 0U);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Failed to create GL texture.\n");
    EXPECT_EQ(logged(), "");
    EXPECT_EQ(loadRawRGBTexture("/i.raw", 1, 1), 0U);
    EXPECT_EQ(logged(), "\n    *** ERROR *** Failed to create GL texture.\n\n");
    EXPECT_TRUE(gl.callsOf("glBindTexture").empty());
}

}  // namespace
