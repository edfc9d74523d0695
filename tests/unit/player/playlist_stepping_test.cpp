#include <gtest/gtest.h>

#include <set>

#include "player/playlist_clips.h"
#include "player/playlist_stepper.h"

namespace tunovka {
namespace {

using Step = PlaylistStepper::Step;
using Tried = std::vector<std::size_t>;

// A list whose entries open or not, and the record of what was tried.
struct List {
    explicit List(std::size_t count, std::set<std::size_t> bad = {})
        : stepper(count), bad(std::move(bad)) {}

    bool step(Step step) {
        tried.clear();
        return stepper.step(step, [this](std::size_t entry) {
            tried.push_back(entry);
            return !bad.contains(entry);
        });
    }

    PlaylistStepper stepper;
    std::set<std::size_t> bad;
    Tried tried;
};

TEST(PlaylistStepper, stepsThroughTheListAndStaysWithinItsEnds) {
    List list(3);
    EXPECT_FALSE(list.step(Step::Previous)) << "nothing was opened yet";
    EXPECT_TRUE(list.step(Step::First));
    EXPECT_EQ(list.stepper.current(), 0u);
    EXPECT_FALSE(list.step(Step::Previous));
    EXPECT_TRUE(list.step(Step::Next));
    EXPECT_TRUE(list.step(Step::Next));
    EXPECT_EQ(list.stepper.current(), 2u);
    EXPECT_FALSE(list.stepper.canStep(Step::Next));
    EXPECT_FALSE(list.step(Step::Next));
    EXPECT_EQ(list.tried, Tried{});
    EXPECT_TRUE(list.step(Step::Previous));
    EXPECT_EQ(list.stepper.current(), 1u);
    EXPECT_TRUE(list.step(Step::First));
    EXPECT_EQ(list.stepper.current(), 0u);
}

TEST(PlaylistStepper, skipsWhatCannotBeOpened) {
    List list(6, {0, 2, 3, 5});
    EXPECT_TRUE(list.step(Step::First));
    EXPECT_EQ(list.tried, (Tried{0, 1}));
    EXPECT_TRUE(list.step(Step::Next));
    EXPECT_EQ(list.tried, (Tried{2, 3, 4}));
    EXPECT_FALSE(list.step(Step::Next)) << "only a bad entry is left";
    EXPECT_EQ(list.stepper.current(), 4u) << "it stays where it was";
    EXPECT_TRUE(list.step(Step::Previous));
    EXPECT_EQ(list.tried, (Tried{3, 2, 1}));
    EXPECT_FALSE(list.step(Step::Previous));
    EXPECT_EQ(list.stepper.current(), 1u);
}

TEST(PlaylistStepper, aListWithoutAGoodEntryOpensNothing) {
    List bad(3, {0, 1, 2});
    EXPECT_FALSE(bad.step(Step::First));
    EXPECT_EQ(bad.tried, (Tried{0, 1, 2}));
    EXPECT_EQ(bad.stepper.current(), std::nullopt);
    List empty(0);
    EXPECT_FALSE(empty.step(Step::First));
    EXPECT_FALSE(empty.step(Step::Next));
}

TEST(PlaylistClips, readsTheEntriesAndTitlesOfEachKind) {
    using Clips = std::vector<PlaylistClip>;
    EXPECT_EQ(readPlaylistClips(L"#EXTM3U\r\n#EXTINF:215,Hana Hegerová - Levandulová\r\n"
                                L"D:\\Hudba\\a.mp3\r\n\\b.wma\r\n#EXTINF:9,Sám\r\n#poznámka\r\n"
                                L"..\\c.wav\r\nd.txt\r\n#EXTINF:1\r\nE.MP3\r\nxmp3",
                                L"E:\\zoznamy\\"),
              (Clips{{L"D:\\Hudba\\a.mp3", {L"Levandulová", L"Hana Hegerová"}},
                     {L"E:\\b.wma", {}},
                     {L"E:\\zoznamy\\..\\c.wav", {L"Sám", L""}},
                     {L"E:\\zoznamy\\xmp3", {}}}));
    EXPECT_EQ(
        readPlaylistClips(L"[playlist]\nTitle2=Druhá\nFile1=a.mp3\nfile2=b.mp3\nFILE10=c.wav\n"
                          L"title10=Jana - Desiata\nLength1=5\n",
                          L"E:\\"),
        (Clips{{L"E:\\a.mp3", {}},
               {L"E:\\b.mp3", {L"Druhá", L""}},
               {L"E:\\c.wav", {L"Desiata", L"Jana"}}}));
    EXPECT_EQ(readPlaylistClips(L"<asx>\n<Entry><Ref HREF = \"hory\\a.mp3\"/>\n"
                                L"<ref href=\"nedokončené.mp3>\n<ref href=\"b.wma\"/>\n</asx>",
                                L"E:\\"),
              (Clips{{L"E:\\hory\\a.mp3", {}}, {L"E:\\b.wma", {}}}));
}

TEST(PlaylistClips, titlesAndEntriesMayLookLikeEachOther) {
    const auto clips =
        readPlaylistClips(L"#EXTINF:1,X - Y.mp3\nTitle1=z.mp3\na.mp3\nTitles\\b=c.mp3\n", L"E:\\");
    ASSERT_EQ(clips.size(), 2u);
    EXPECT_EQ(clips[0], (PlaylistClip{L"E:\\a.mp3", {L"Y.mp3", L"X"}}));
    EXPECT_EQ(clips[1].path, L"E:\\Titles\\b=c.mp3");
}

TEST(PlaylistClips, foreignBytesGiveNoEntries) {
    EXPECT_TRUE(readPlaylistClips(L"", L"E:\\").empty());
    EXPECT_TRUE(readPlaylistClips(std::wstring(5000, L'\0'), L"E:\\").empty());
    EXPECT_TRUE(readPlaylistClips(L"a.mp3\rb.txt", L"E:\\").empty()) << "a lone CR is data";
}

}  // namespace
}  // namespace tunovka
