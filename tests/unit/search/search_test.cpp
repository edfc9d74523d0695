#include <gtest/gtest.h>

#include "search/search_result.h"

namespace tunovka {
namespace {

using Texts = std::vector<std::wstring>;

Texts keys(const SearchResult& result) {
    Texts keys;
    for (const FoundFile& file : result.rows()) keys.push_back(file.key);
    return keys;
}

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

TEST(SearchResult, listsEachPathOnceAndStaysSorted) {
    SearchResult result;
    EXPECT_TRUE(result.isEmpty());
    result.list({L"C:\\x\\b.mp3", L"C:\\a.wma", L"C:\\x\\b.mp3"});
    EXPECT_EQ(keys(result), (Texts{L"C:\\x\\b.mp3", L"C:\\a.wma"}));
    EXPECT_EQ(result.row(0).name, L"b.mp3");
    EXPECT_EQ(result.row(1).picture, L"winamp4");
    result.sort(SortOrder::Ascending);
    int left = 2;
    result.list({L"C:\\3.mp3", L"C:\\2.mp3", L"C:\\1.mp3"},
                {.cancelled = [&] { return --left == 0; }});
    EXPECT_EQ(keys(result), (Texts{L"C:\\2.mp3", L"C:\\3.mp3"}));
    EXPECT_FALSE(result.isEmpty());
    result.list({});
    EXPECT_EQ(keys(result), Texts{L""});
    EXPECT_EQ(result.row(0).name, kNothingFound);
    EXPECT_TRUE(result.isEmpty());
}

TEST(SearchResult, writesPathsAndAlwaysAsx) {
    SearchResult result;
    result.list({L"b.mp3", L"l.pls", L"l.asx", L"L.M3U"});
    EXPECT_EQ(result.exportLines(2), (Texts{L"b.mp3", L"l.asx", L"L.M3U"}));
    EXPECT_EQ(result.exportLines(1), (Texts{L"b.mp3", L"l.pls", L"l.asx", L"L.M3U"}));
    result.list({L"l.asx", L"l.m3u"});
    EXPECT_EQ(result.exportLines(2), std::nullopt);
    result.list({L"l.asx"});
    EXPECT_EQ(result.exportQuestion(), std::nullopt);
    EXPECT_EQ(result.exportLines(0), Texts{L"l.asx"});
}

}  // namespace
}  // namespace tunovka
