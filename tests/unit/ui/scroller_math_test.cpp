#include "ui/scroller_math.h"

#include <gtest/gtest.h>

#include "support/error_of.h"

namespace tunovka {
namespace {

// Buttons of 16 at both ends of a track of 200.
const ScrollerTrack kTrack{.top = 16, .bottom = 184, .height = 200};

ScrollerMath scroller(int rows, int perPage) {
    ScrollerMath math;
    math.setThumbHeight(20);
    math.layout(kTrack, rows, perPage);
    return math;
}

TEST(ScrollerMath, rowsPerPageRoundsForTheSearchAndCutsForTheEditor) {
    EXPECT_EQ(rowsPerPageRounded(106, 10), 11);
    EXPECT_EQ(rowsPerPageRounded(105, 10), 10);
    EXPECT_EQ(rowsPerPageRounded(115, 10), 12);
    EXPECT_EQ(rowsPerPageCut(109, 10), 10);
    EXPECT_EQ(rowsPerPageRounded(100, 0), 0);
    EXPECT_EQ(rowsPerPageCut(100, 0), 0);
}

TEST(ScrollerMath, thumbShowsThePageAndNeverShrinksAway) {
    EXPECT_EQ(scroller(20, 10).thumbHeight(), 74);  // half of the way left by the former thumb
    EXPECT_EQ(scroller(30'000, 10).thumbHeight(), 8);
    ScrollerMath math = scroller(20, 10);
    math.layout(kTrack, 20, 10);
    EXPECT_EQ(math.thumbHeight(), 47);  // from the present height again
    ScrollerMath tiny;
    tiny.setThumbHeight(20);
    tiny.layout({.top = 2, .bottom = 4, .height = 6}, 20, 10);
    EXPECT_EQ(tiny.thumbHeight(), 6);
    tiny.dragTo(100);
    tiny.step(ScrollDirection::Down);
    EXPECT_EQ(tiny.thumbTop(), 2);
    EXPECT_EQ(tiny.targetRow(ScrollDirection::Down), 11u);  // steps work without any way to go
}

TEST(ScrollerMath, hidesWhenAllRowsFit) {
    EXPECT_FALSE(scroller(0, 10).visible());
    EXPECT_FALSE(scroller(10, 10).visible());
    EXPECT_TRUE(scroller(11, 10).visible());
    ScrollerMath math = scroller(10, 10);
    math.step(ScrollDirection::Down);
    math.showRow(9);
    EXPECT_EQ(math.fraction(), 0);
    EXPECT_EQ(math.targetRow(ScrollDirection::Down), 10u);
    EXPECT_EQ(math.targetRow(ScrollDirection::Up), 1u);
    EXPECT_EQ(scroller(0, 10).targetRow(ScrollDirection::Up), 0u);
}

TEST(ScrollerMath, dragStaysBetweenTheButtonsAndFindsTheRow) {
    ScrollerMath math = scroller(110, 10);
    math.dragTo(-50);
    EXPECT_EQ(math.thumbTop(), 16);
    EXPECT_EQ(math.targetRow(ScrollDirection::Up), 1u);
    math.dragTo(1000);
    EXPECT_EQ(math.thumbTop(), 184 - math.thumbHeight());
    EXPECT_EQ(math.targetRow(ScrollDirection::Down), 110u);
    EXPECT_EQ(math.targetRow(ScrollDirection::Up), 100u);
    math.dragTo(16 + (168 - math.thumbHeight()) * 0.125);
    EXPECT_EQ(math.targetRow(ScrollDirection::Up), 12u);  // 12.5 to the even neighbour
    EXPECT_EQ(math.targetRow(ScrollDirection::Down), 22u);
}

TEST(ScrollerMath, everyStepCountsThoughItIsFarBelowAPixel) {
    ScrollerMath math = scroller(30'010, 10);
    for (int i = 0; i < 100; ++i) math.step(ScrollDirection::Down);
    EXPECT_EQ(math.targetRow(ScrollDirection::Down), 110u);
    EXPECT_EQ(math.thumbTop(), 17);
    for (int i = 0; i < 101; ++i) math.step(ScrollDirection::Up);
    EXPECT_EQ(math.targetRow(ScrollDirection::Up), 1u);
}

TEST(ScrollerMath, followsTheSelectedRow) {
    ScrollerMath math = scroller(110, 10);
    math.showRow(0);
    EXPECT_EQ(math.fraction(), 0);
    math.showRow(50);
    EXPECT_EQ(math.fraction(), 0.5);
    math.showRow(109);
    EXPECT_EQ(math.fraction(), 1);
}

TEST(ScrollerMath, countsPast16BitsAreRefusedWhole) {
    ScrollerMath math = scroller(110, 10);
    EXPECT_EQ(errorOf([&] { math.layout(kTrack, 32'768, 20); }), kOverflow);
    EXPECT_EQ(math.targetRow(ScrollDirection::Down), 10u);
    math.layout(kTrack, 32'767, 10);
    EXPECT_TRUE(math.visible());
}

}  // namespace
}  // namespace tunovka
