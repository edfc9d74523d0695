// What the panel shows, what the bytes of a sound file tell, and how its strips count.
#include <gtest/gtest.h>

#include <limits>

#include "core/multimedialny.h"
#include "player/panel_texts.h"
#include "player/sound_file.h"

namespace tunovka {
namespace {

TEST(PanelTexts, countHoursPadSecondsAndScrollWholeCharacters) {
    for (const double none : {0.0, std::numeric_limits<double>::quiet_NaN()})
        EXPECT_EQ(timeText(none), L"0:00 min");
    EXPECT_EQ(timeText(65), L"1:05 min");
    EXPECT_EQ(timeText(3725), L"1 h 2:05 min");
    EXPECT_EQ(timeText(10'805), L"3 h 0:05 min");
    EXPECT_EQ(nowPlayingText(L"Žaba", L""), L"Autor: Žaba  Titul: neuvedený   ");
    EXPECT_EQ(openingText(L"E:\\hudba\\Žaba.mp3"), L"Otvára sa: Žaba.mp3   ");
    EXPECT_EQ(scrolledByOne(L"Autor "), L"utor A");
    EXPECT_EQ(scrolledByOne(scrolledByOne(L"a𝄞b")), L"ba𝄞");
}

TEST(WritablePlaylists, areKnownByTheirNames) {
    for (const wchar_t* name : {L"a.pls", L"a.m3u"})
        EXPECT_TRUE(MultiMedialny::isWritablePlaylistName(name)) << name;
    for (const wchar_t* name : {L"a.PLS", L"a.M3U", L"a.asx", L"a.pls.mp3", L""})
        EXPECT_FALSE(MultiMedialny::isWritablePlaylistName(name)) << name;
}

TEST(Strips, keepTheirEnds) {
    EXPECT_EQ(progressFraction(5, 0), 0);
    EXPECT_EQ(progressFraction(1.999, 100), 0.01);
    EXPECT_EQ(progressFraction(101, 100), 1);
    EXPECT_EQ(seekPosition(-3, 200, 100), 0.5);
    EXPECT_EQ(seekPosition(0, 200, 100), 0);
    EXPECT_EQ(seekPosition(900, 200, 100), 100);
    EXPECT_EQ(stripVolume(60, 50), -3920);  // below the strip is one unit above its bottom
    EXPECT_EQ(movedPosition(StripMove::PageBack, 10, 200), 0);
    EXPECT_EQ(movedPosition(StripMove::Forward, 10, 200), 15);
    EXPECT_EQ(movedVolume(StripMove::Forward, 98), 100);
}

SoundFile look(const std::string& bytes) {
    return SoundFile::look(
        bytes.size(),
        [&](std::uint64_t at, std::size_t count) {
            return at < bytes.size() ? bytes.substr(static_cast<std::size_t>(at), count) : "";
        },
        [](std::string_view text) { return std::wstring(text.begin(), text.end()); });
}

// An MPEG 1 layer III frame of 128,000 bits and 44,100 samples a second.
std::string frame() {
    return std::string("\xFF\xFB\x90\x00", 4) + std::string(413, '\0');
}

std::string wave(
    const char* format = "\x01\x00\x01\x00\x40\x1F\x00\x00\x80\x3E\x00\x00\x02\x00\x10\x00") {
    return std::string("RIFF\0\0\0\0WAVEfmt \x10\0\0\0", 20) + std::string(format, 16) +
           std::string("data\4\0\0\0abcd", 12);
}

TEST(SoundFile, isKnownByItsFirstBytes) {
    const std::string tag("ID3\4\0\0\0\0\2\1", 10);  // 257 bytes follow
    for (const std::string& sound : {wave(), "junk" + frame() + frame(), frame() + "TAG",
                                     tag + std::string(257, '\xFF') + frame() + frame()})
        EXPECT_TRUE(look(sound).isSound) << testing::PrintToString(sound.substr(0, 8));
    for (const std::string& other :
         {wave().substr(0, 20),
          wave("\x01\x00\xFF\xFF\x40\x1F\x00\x00\x80\x3E\x00\x00\x02\x00\x10\x00"),
          frame() + std::string(500, 'x'), std::string(5000, '\xFF'), std::string(),
          std::string("toto nie je zvuk")})
        EXPECT_FALSE(look(other).isSound) << testing::PrintToString(other.substr(0, 8));
}

TEST(SoundFile, aVariableRateIsReadFromEitherHeader) {
    std::string table;
    for (int at = 0; at < 100; ++at) table += static_cast<char>(at < 50 ? at : 128 + at);
    std::string xing = frame();
    xing.replace(36, 12, std::string("Xing\0\0\0\5\0\0\x59\xD8", 12)).replace(48, 100, table);
    const VariableRate rate = look(xing + frame()).rate;
    EXPECT_NEAR(rate.seconds, 600.8, 0.1);
    EXPECT_NEAR(rate.shareAt(rate.seconds / 4), 25 / 256.0, 0.001);
    EXPECT_NEAR(rate.shareAt(rate.seconds), 1, 0.001);
    std::string vbri = frame();
    vbri.replace(36, 4, "VBRI").replace(50, 4, std::string("\0\0\x59\xD8", 4));
    vbri.replace(54, 8, std::string("\0\2\0\1\0\1\0\0", 8)).replace(62, 2, "\1\3");
    EXPECT_NEAR(look(vbri + frame()).rate.seconds, 600.8, 0.1);
    EXPECT_NEAR(look(vbri + frame()).rate.shareAt(300.4), 0.25, 0.001);
    EXPECT_EQ(look(frame() + frame()).rate.seconds, 0);
}

TEST(SoundFile, itsTagTellsTitleAndAuthor) {
    std::string title = "Titul", artist = "Autor";
    title.resize(30, '\0');
    artist.resize(30, ' ');
    const std::string tag = "TAG" + title + artist + std::string(65, 'x');
    EXPECT_EQ(look("sound" + tag).details, (ClipDetails{L"Titul", L"Autor"}));
    EXPECT_EQ(look(std::string(128, 'x')).details, ClipDetails{});
}

}  // namespace
}  // namespace tunovka
