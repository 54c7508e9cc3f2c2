// Whether a message for the debugger can make more than one line.

#include <gtest/gtest.h>

#include "platform/win32.h"

namespace {

TEST(DebugOutput, IsOneLineAMessage) {
    ::testing::internal::CaptureStderr();
    OutputDebugStringW(u"two\nlines \xE9 %s\n");
    OutputDebugStringW(u"");
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "two lines \xC3\xA9 %s\n\n");
}

}  // namespace
