#include <gtest/gtest.h>

#include "ui/geometry.h"

namespace tunovka {
namespace {

// Windows of 400 x 300 that open one after the other; the step is 30.
std::vector<Rect> opened(const Rect& main, const Rect& work, int count) {
    std::vector<Rect> windows{main};
    for (int i = 0; i < count; ++i) windows.push_back(freePlace({400, 300}, windows, work, 30));
    return windows;
}

TEST(FreePlace, isBesideTheMainWindowWhereThereIsRoom) {
    const Rect screen{0, 0, 1900, 1000};
    const std::vector<Rect> windows = opened({700, 200, 600, 500}, screen, 2);
    EXPECT_EQ(windows[1], (Rect{1300, 200, 400, 300}));
    EXPECT_EQ(windows[2], (Rect{1330, 230, 400, 300}));
    EXPECT_EQ(opened({1200, 200, 600, 500}, screen, 1)[1], (Rect{800, 200, 400, 300}));
}

TEST(FreePlace, isElseCascadedWhollyOnTheScreenAndNeverOverAnother) {
    const Rect screen{100, 50, 800, 500};
    EXPECT_EQ(opened({150, 60, 700, 400}, screen, 1)[1], (Rect{180, 90, 400, 300}));
    const auto windows = opened({150, 60, 700, 400}, screen, 40);
    for (std::size_t i = 1; i < windows.size(); ++i) {
        EXPECT_TRUE(windows[i].x >= 100 && windows[i].right() <= 900) << i;
        EXPECT_TRUE(windows[i].y >= 50 && windows[i].bottom() <= 550) << i;
        for (std::size_t j = 0; j < i; ++j) EXPECT_FALSE(windows[i] == windows[j]) << i << j;
    }
    EXPECT_EQ(opened({0, 0, 300, 200}, {0, 0, 300, 200}, 1)[1], (Rect{0, 0, 400, 300}));
}

}  // namespace
}  // namespace tunovka
