#include <gtest/gtest.h>

#include "search/export.h"
#include "search/sorting_out.h"

namespace tunovka {
namespace {

using Texts = std::vector<std::wstring>;

TEST(SortingOut, keepsMusicAndPlaylistsInTheirOrder) {
    Texts paths{L"C:\\b.mp3", L"C:\\a.MP3",  L"C:\\x.txt", L"C:\\l.asx",
                L"C:\\xmp3",  L"C:\\a.wma.", L"C:\\a.pls"};
    int turns = 0;
    keepMusicAndPlaylists(paths, {.letEventsRun = [&] { ++turns; }});
    EXPECT_EQ(paths, (Texts{L"C:\\b.mp3", L"C:\\l.asx", L"C:\\a.pls"}));
    EXPECT_EQ(turns, 7);
}

TEST(SortingOut, stopLeavesWhatWasLookedAt) {
    Texts paths{L"a.mp3", L"b.txt", L"c.wav", L"d.wma"};
    int left = 3;
    keepMusicAndPlaylists(paths, {.cancelled = [&] { return --left == 0; }});
    EXPECT_EQ(paths, (Texts{L"a.mp3", L"c.wav"}));
}

TEST(SortingOut, countsReadAsTheirCasesSay) {
    EXPECT_EQ(collectedText(0, false), L"  0");
    EXPECT_EQ(collectedText(1, true), L"  1 - prerušené");
    EXPECT_FALSE(isWorthListing(1));
    EXPECT_TRUE(isWorthListing(2));
    EXPECT_EQ(sortedOutText(collectedText(100'000, false), 30'000),
              L" 100 000, z toho hudobné:  30 000");
    EXPECT_EQ(sortedOutText(collectedText(2, true), 0), L"  2 - prerušené, z toho hudobné:   0");
}

TEST(Export, writesPathsAndAlwaysAsx) {
    const Texts paths{L"b.mp3", L"l.pls", L"l.asx", L"L.M3U", L""};
    EXPECT_EQ(exportLines(paths, false), (Texts{L"b.mp3", L"l.asx", L"L.M3U"}));
    EXPECT_EQ(exportLines(paths, true), (Texts{L"b.mp3", L"l.pls", L"l.asx", L"L.M3U"}));
}

}  // namespace
}  // namespace tunovka
