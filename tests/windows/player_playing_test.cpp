// The player over the system's filter graphs: real files into the stage's silent sound device.
#include <gtest/gtest.h>
#include <windows.h>

#include "core/handle.h"
#include "player/directshow_engine.h"
#include "support/player_watch.h"
#include "support/scratch_folder.h"

namespace tunovka {
namespace {

constexpr double kHearing = 0.2;  // seconds by which a position may be off
constexpr double kLong = 20;      // seconds of a tone whose end no test hears

class Playing : public testing::Test {
  protected:
    std::wstring file(const std::wstring& name, const std::string& content) {
        return folder_.file(name, content);
    }
    std::wstring toneFile(const std::wstring& name, double seconds) {
        return file(name, tone(seconds));
    }
    bool untilPast(double seconds) {
        return runUntil([&] { return player_->CurrentPosition() > seconds; });
    }

    ScratchFolder folder_;
    WatchedPlayer player_{[] { return std::make_unique<DirectShowEngine>(); }};
};

TEST_F(Playing, everyKindPlaysWithTheTitleOfItsTagToItsEnd) {
    for (const auto& [name, seconds] : {std::pair{L"Ladička 440 Hz.wav", 4.0},
                                        {L"Tón 523 Hz.mp3", 4.1},
                                        {L"Tón 659 Hz.wma", 4.04}}) {
        SCOPED_TRACE(testing::Message() << name);
        const DWORD opened = GetTickCount();
        player_->setFileName(samplesFolder() + L"Skúšky\\" + name);
        EXPECT_EQ(player_.told(), Notifications{}) << "never from inside a call";
        ASSERT_TRUE(player_.untilTold(change(0, 2)));
        EXPECT_NEAR(player_->Duration(), seconds, 0.15);
        const bool tagged = !std::wstring(name).ends_with(L".wav");
        EXPECT_EQ(!player_->GetMediaInfoString(kClipTitle).empty(), tagged);
        EXPECT_EQ(!player_->GetMediaInfoString(kClipAuthor).empty(), tagged);
        ASSERT_TRUE(player_.untilTold(kEnd));
        EXPECT_GE(GetTickCount() - opened, 3000u);
        EXPECT_EQ(player_.told(), (Notifications{kNewClip, change(0, 2), change(2, 0), kEnd}));
    }
    player_->Play();
    ASSERT_TRUE(player_.untilTold(change(0, 2))) << "from the start once more";
}

TEST_F(Playing, pauseHoldsSeekingLeadsAndStopLetsGo) {
    const std::wstring path = toneFile(L"a.wav", kLong);
    player_->setFileName(path);
    ASSERT_TRUE(untilPast(0.3));
    player_->Pause();
    ASSERT_TRUE(player_.untilTold(change(2, 1)));
    const double held = player_->CurrentPosition();
    const auto isHeld = [&] {
        return !FileHandle(
            CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    };
    EXPECT_TRUE(isHeld()) << "pause holds the file";
    const DWORD resumed = GetTickCount();
    player_->Play();
    ASSERT_TRUE(untilPast(held + 0.3));
    EXPECT_LE(player_->CurrentPosition(), held + (GetTickCount() - resumed) / 1000.0 + kHearing);
    const DWORD sought = GetTickCount();
    player_->setCurrentPosition(10);
    EXPECT_EQ(player_->CurrentPosition(), 10) << "at once";
    ASSERT_TRUE(untilPast(10.3));
    EXPECT_LE(player_->CurrentPosition(), 10 + (GetTickCount() - sought) / 1000.0 + kHearing);
    player_->Stop();
    ASSERT_TRUE(player_.untilTold(change(2, 0)));
    EXPECT_EQ(player_->CurrentPosition(), 0);
    EXPECT_FALSE(isHeld()) << "a stopped file is free";
    player_->Play();
    ASSERT_TRUE(untilPast(0.1));
    EXPECT_LE(player_->CurrentPosition(), 9);
    player_->setCurrentPosition(player_->Duration());
    ASSERT_TRUE(player_.untilTold(kEnd)) << "seeking to the end ends the clip";
    player_->setFileName(path);
    player_->release();
    EXPECT_TRUE(DeleteFileW(path.c_str())) << "a released file is free, though it was opening";
}

TEST_F(Playing, whatCannotBePlayedIsToldOnceAndTheNextFilePlays) {
    const std::wstring good = toneFile(L"dobrý.wav", kLong);
    const std::wstring locked = toneFile(L"zamknutý.wav", 1.0);
    const FileHandle lock(
        CreateFileW(locked.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    for (const std::wstring& path :
         {folder_ / L"niet\\je.mp3", file(L"prázdny.mp3", ""), file(L"šum.wav", noise(200'000)),
          file(L"krátky.wav", tone(1.0).substr(0, 20)), file(L"text.wma", "toto nie je zvuk"),
          folder_.path(), std::wstring(L"??\x01*.mp3"), locked,
          L"E:\\" + std::wstring(3000, L'a') + L".mp3", file(L"prázdny.m3u", ""),
          file(L"zlý.m3u", "niet1.mp3\r\nniet2.mp3\r\n\0\0.mp3"), folder_ / L"niet.pls"}) {
        SCOPED_TRACE(testing::Message() << path.substr(0, 80));
        player_->setFileName(path);
        ASSERT_TRUE(player_.untilTold(kFailure));
        EXPECT_GT(player_->ErrorDescription().size(), 10u);
        EXPECT_EQ(player_->Duration(), 0);
        player_->Pause();
        player_->Next();
        player_->setCurrentPosition(1);
        player_->setFileName(good);
        ASSERT_TRUE(player_.untilTold(change(0, 2)));
        EXPECT_EQ(player_.told(), (Notifications{kFailure, kNewClip, change(0, 2)}));
        EXPECT_EQ(player_->ErrorDescription(), L"");
    }
}

TEST_F(Playing, replacingAFileDropsWhatWasLeftOfIt) {
    player_->setFileName(toneFile(L"a.wav", 0.5));
    player_->setFileName(folder_ / L"niet.mp3");
    player_->setFileName(toneFile(L"b.wav", kLong));
    ASSERT_TRUE(untilPast(1));
    EXPECT_EQ(player_.told(), (Notifications{kNewClip, change(0, 2)}));
    player_->setFileName(L"");
    EXPECT_EQ(player_->Duration(), 0);
    player_->Play();
    player_->setFileName(toneFile(L"c.wav", 0.5));
    player_.destroy();
    settle();
    EXPECT_EQ(player_.told(), Notifications{});
}

TEST_F(Playing, aListOfEachKindPlaysItsEntriesAndPassesOverWhatIsBad) {
    toneFile(L"prvý.wav", 1);
    toneFile(L"druhý.wav", 1.5);
    file(L"šum.wav", "RIFF nie je to ono");
    for (const auto& list :
         {file(L"1.m3u",
               "niet.wav\r\n#EXTINF:1,Anna - Prv\xFD\r\nprv\xFD.wav\r\n\x9Aum.wav\r\n"
               "#EXTINF:1,Druh\xFD\r\ndruh\xFD.wav\r\nniet2.wav\r\n"),
          file(L"2.pls",
               "[playlist]\nFile1=prv\xFD.wav\nTitle1=Prv\xFD\nFile2=druh\xFD.wav\nTitle2="
               "Druh\xFD\n"),
          file(L"3.ASX",
               "<asx>\r\n<ref href=\"prv\xFD.wav\"/>\r\n<ref href=\"druh\xFD.wav\"/>\r\n")}) {
        SCOPED_TRACE(testing::Message() << list);
        player_->setFileName(list);
        ASSERT_TRUE(player_.untilTold(kEnd));
        EXPECT_EQ(player_.told(),
                  (Notifications{kNewClip, change(0, 2), kNewClip, change(2, 0), kEnd}));
    }
    EXPECT_EQ(player_.titles(),
              (std::vector<std::wstring>{L"Prvý", L"Druhý", L"Prvý", L"Druhý", L"", L""}));
    player_->setFileName(folder_ / L"2.pls");
    player_->Next();  // asked before the list is open
    ASSERT_TRUE(runUntil([&] { return player_.titles().back() == L"Druhý"; }));
    player_->Previous();
    ASSERT_TRUE(runUntil([&] { return player_.titles().back() == L"Prvý"; }));
}

// Ten minutes of silence: the first half in frames of 8,000 bits a second, the second of 32,000.
TEST_F(Playing, aVariableRateIsReckonedWithInLengthAndSeeking) {
    constexpr int kFrames = 22969;  // of 576 samples, 22,050 a second: 600 s
    const auto frame = [](int rate, int bytes) {
        return std::string("\xFF\xF3", 2) + static_cast<char>(rate << 4) + '\xC0' +
               std::string(static_cast<std::size_t>(bytes) - 4, '\0');
    };
    std::string rest;
    for (int at = 0; at < kFrames; ++at) rest += at < kFrames / 2 ? frame(1, 26) : frame(4, 104);
    const auto number = [](std::size_t value) {
        std::string bytes;
        for (int shift = 24; shift >= 0; shift -= 8) bytes += static_cast<char>(value >> shift);
        return bytes;
    };
    std::string table;  // a fifth of the bytes are in the first half
    for (int at = 0; at < 100; ++at)
        table += static_cast<char>(256 * (at < 50 ? at * 0.4 : 20 + (at - 50) * 1.6) / 100);
    std::string first = frame(6, 156);
    first.replace(13, 116,
                  "Xing" + number(7) + number(kFrames) + number(156 + rest.size()) + table);
    const std::string bytes = first + rest;
    player_->setFileName(file(L"dlhý.mp3", bytes));
    ASSERT_TRUE(player_.untilTold(change(0, 2)));
    EXPECT_NEAR(player_->Duration(), 600, 1);
    player_->setCurrentPosition(596);
    const DWORD sought = GetTickCount();
    ASSERT_TRUE(player_.untilTold(kEnd));
    EXPECT_NEAR((GetTickCount() - sought) / 1000.0, 4, 1.5);
}

}  // namespace
}  // namespace tunovka
