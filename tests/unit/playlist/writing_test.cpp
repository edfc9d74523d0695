#include <gtest/gtest.h>

#include "core/paths.h"
#include "playlist/line_grammar.h"
#include "playlist/write.h"
#include "support/error_of.h"

namespace tunovka {
namespace {

using Lines = std::vector<std::wstring>;

TEST(RelativeText, followsTheDriveRootConvention) {
    EXPECT_EQ(relativeEntryText(L"C:\\pl", L""), L"");
    EXPECT_EQ(relativeEntryText(L"C:\\pl", L"C:\\pl\\a.mp3"), L"a.mp3");
    EXPECT_EQ(relativeEntryText(L"C:\\pl", L"C:\\pl\\rock\\a.mp3"), L"rock\\a.mp3");
    EXPECT_EQ(relativeEntryText(L"C:\\pl", L"C:\\hudba\\a.mp3"), L"..\\hudba\\a.mp3");
    EXPECT_EQ(relativeEntryText(L"C:\\pl\\sub", L"C:\\a.mp3"), L"..\\a.mp3");
    EXPECT_EQ(relativeEntryText(L"C:\\", L"C:\\a.mp3"), L"a.mp3");
    EXPECT_EQ(relativeEntryText(L"C:\\", L"C:\\x\\a.mp3"), L"x\\a.mp3");
    EXPECT_EQ(relativeEntryText(L"C:\\pl", L"C:\\plus\\a.mp3"), L"..\\plus\\a.mp3");
    EXPECT_EQ(relativeEntryText(L"C:\\pl", L"D:\\a.mp3"), L"D:\\a.mp3");
    EXPECT_EQ(relativeEntryText(L"C:\\pl", L"c:\\x\\a.mp3"), L"c:\\x\\a.mp3");
    EXPECT_EQ(relativeEntryText(L"C:\\Pl", L"C:\\pl\\a.mp3"), L"..\\pl\\a.mp3");
}

TEST(PlaylistLines, followTheChosenName) {
    const Lines paths{L"C:\\pl\\a.mp3", L"C:\\hudba\\b.wav"};
    EXPECT_EQ(
        playlistLines(L"C:\\pl\\x.pls", paths, true),
        (Lines{L"[playlist]", L"File1=a.mp3", L"File2=..\\hudba\\b.wav", L"NumberOfEntries=2"}));
    EXPECT_EQ(playlistLines(L"C:\\pl\\x.PLS", paths, true), (Lines{L"a.mp3", L"..\\hudba\\b.wav"}));
    EXPECT_EQ(playlistLines(L"C:\\pl\\x", paths, false), paths);
    EXPECT_EQ(playlistLines(L"C:\\x.pls", {}, false), (Lines{L"[playlist]", L"NumberOfEntries=0"}));
    EXPECT_EQ(playlistLines(L"C:\\x.m3u", {}, true), Lines{});
    int turns = 0;
    playlistLines(L"C:\\x.pls", paths, false, [&] { ++turns; });
    EXPECT_EQ(turns, 2);
}

TEST(PlaylistBytes, endEveryLineAndNameTheEntryThatFails) {
    const auto ascii = [](std::wstring_view text) {
        std::string bytes;
        for (const wchar_t letter : text) {
            if (letter > 127) throw RuntimeError(kInvalidCall, text);
            bytes += static_cast<char>(letter);
        }
        return bytes;
    };
    EXPECT_EQ(playlistBytes({L"a.mp3", L"b.wav"}, ascii), "a.mp3\r\nb.wav\r\n");
    EXPECT_EQ(playlistBytes({}, ascii), "");
    try {
        playlistBytes({L"a.mp3", L"日本.mp3"}, ascii);
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_NE(error.description.find(L"日本.mp3"), std::wstring::npos);
    }
}

}  // namespace
}  // namespace tunovka
