#include <gtest/gtest.h>

#include "ui/color_math.h"

namespace tunovka {
namespace {

TEST(Colors, aWarningIsReadableOnEveryGroundAndStaysAColor) {
    EXPECT_NEAR(contrast(0x000000, 0xFFFFFF), 21, 0.01);
    EXPECT_NEAR(contrast(0x123456, 0x123456), 1, 0.01);
    for (Color ground = 0; ground <= 0xFFFFFF; ground += 0x010203) {
        const Color red = readableOn(ground, 0x0000FF);
        const bool possible = contrast(ground, 0) >= 6 || contrast(ground, 0xFFFFFF) >= 6;
        if (possible) {
            EXPECT_GE(contrast(ground, red), 6) << std::hex << ground;
        }
    }
    EXPECT_NE(readableOn(0x000000, 0x0000FF), 0xFFFFFFu);
    EXPECT_NE(readableOn(0xFFFFFF, 0x0000FF), 0x000000u);
}

}  // namespace
}  // namespace tunovka
