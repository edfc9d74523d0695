#include <gtest/gtest.h>

#include <limits>

#include "player/now_playing.h"
#include "player/strip_math.h"
#include "player/time_text.h"

namespace tunovka {
namespace {

TEST(TimeText, countsHoursAndPadsSecondsAlone) {
    EXPECT_EQ(timeText(0), L"0:00 min");
    EXPECT_EQ(timeText(-5), L"0:00 min");
    EXPECT_EQ(timeText(std::numeric_limits<double>::quiet_NaN()), L"0:00 min");
    EXPECT_EQ(timeText(std::numeric_limits<double>::infinity()), L"0:00 min");
    EXPECT_EQ(timeText(59.99), L"0:59 min");
    EXPECT_EQ(timeText(65), L"1:05 min");
    EXPECT_EQ(timeText(3725), L"1 h 2:05 min");
    EXPECT_EQ(timeText(10'805), L"3 h 0:05 min");
}

TEST(NowPlaying, namesAndScrolls) {
    EXPECT_EQ(nowPlayingText(L"Žaba", L""), L"Autor: Žaba  Titul: neuvedený   ");
    EXPECT_EQ(scrolledByOne(L"Autor "), L"utor A");
    EXPECT_EQ(scrolledByOne(L""), L"");
    // No character is ever torn apart, whatever the size of its units.
    std::wstring text = L"a𝄞b";
    text = scrolledByOne(scrolledByOne(text));
    EXPECT_EQ(text, L"ba𝄞");
}

TEST(Strips, progressMovesInHundredths) {
    EXPECT_EQ(progressFraction(0, 0), 0);
    EXPECT_EQ(progressFraction(5, 0), 0);
    EXPECT_EQ(progressFraction(1.999, 100), 0.01);
    EXPECT_EQ(progressFraction(50, 100), 0.5);
    EXPECT_EQ(progressFraction(101, 100), 1);
}

TEST(Strips, seekingStaysWithinTheClip) {
    EXPECT_EQ(seekPosition(-3, 200, 100), 0.5);
    EXPECT_EQ(seekPosition(0, 200, 100), 0);
    EXPECT_EQ(seekPosition(100, 200, 100), 50);
    EXPECT_EQ(seekPosition(900, 200, 100), 100);
    EXPECT_EQ(seekPosition(5, 0, 100), 0);
}

TEST(Strips, volumeRunsFromTheBottomUp) {
    EXPECT_EQ(stripVolume(0, 50), 0);
    EXPECT_EQ(stripVolume(-9, 50), 0);
    EXPECT_EQ(stripVolume(25, 50), -2000);
    EXPECT_EQ(stripVolume(50, 50), -4000);
    EXPECT_EQ(stripVolume(60, 50), -3920);  // below the strip is one unit above its bottom
}

TEST(Strips, keysStayWithinTheEnds) {
    EXPECT_EQ(movedPosition(StripMove::Forward, 10, 200), 15);
    EXPECT_EQ(movedPosition(StripMove::PageBack, 10, 200), 0);
    EXPECT_EQ(movedPosition(StripMove::PageForward, 190, 200), 200);
    EXPECT_EQ(movedPosition(StripMove::Last, 10, 0), 0);
    EXPECT_EQ(movedVolume(StripMove::Forward, 98), 100);
    EXPECT_EQ(movedVolume(StripMove::First, 98), 0);
    EXPECT_EQ(percentVolume(0), -4000);
    EXPECT_EQ(percentVolume(75), -1000);
    EXPECT_EQ(percentVolume(100), 0);
}

}  // namespace
}  // namespace tunovka
