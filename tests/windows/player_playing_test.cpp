// The filter-graph engine plays real files into the stage's silent sound device.
#include <gtest/gtest.h>
#include <windows.h>

#include <cmath>
#include <string>
#include <vector>

#include "core/handle.h"
#include "player/directshow_engine.h"
#include "support/player_watch.h"
#include "support/scratch_folder.h"

namespace tunovka {
namespace {

constexpr double kHearing = 0.15;  // seconds by which a position may be off
constexpr double kLong = 20;       // seconds of a tone whose end no test hears

void linger(DWORD milliseconds) {
    runUntil([] { return false; }, milliseconds);
}

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
    // Whether what plays is where it was at a tick count, and no further on than the time since.
    void expectPlayingFrom(double seconds, DWORD since) {
        const double position = player_->CurrentPosition();
        EXPECT_GE(position, seconds - kHearing);
        EXPECT_LE(position, seconds + (GetTickCount() - since) / 1000.0 + kHearing);
    }

    ScratchFolder folder_;
    WatchedPlayer player_{[] { return std::make_unique<DirectShowEngine>(); }};
};

TEST_F(Playing, aToneFromItsStartToItsEnd) {
    const std::wstring path = toneFile(L"tón.wav", 1.0);
    const DWORD opened = GetTickCount();
    player_->setFileName(path);
    EXPECT_EQ(player_.told(), Notifications{});
    ASSERT_TRUE(player_.untilTold(change(0, 2)));
    EXPECT_NEAR(player_->Duration(), 1.0, 0.01);
    ASSERT_TRUE(player_.untilTold(kEnd));
    EXPECT_GE(GetTickCount() - opened, 500u);  // the sound device is ahead of what is heard
    EXPECT_EQ(player_.told(), (Notifications{kNewStream, change(0, 2), change(2, 0), kEnd}));
    linger(300);
    EXPECT_EQ(player_.told(), Notifications{}) << "the end comes once";

    player_->Play();
    ASSERT_TRUE(player_.untilTold(kEnd)) << "played again from the start";
    EXPECT_EQ(player_.told(), (Notifications{kNewStream, change(0, 2), change(2, 0), kEnd}));
}

TEST_F(Playing, everyKindPlaysWithTheTitleOfItsTag) {
    struct Sample {
        std::wstring name;
        double seconds;
    };
    for (const Sample& sample :
         {Sample{L"Skúšky\\Ladička 440 Hz.wav", 4.0}, Sample{L"Skúšky\\Tón 523 Hz.mp3", 4.1},
          Sample{L"Skúšky\\Tón 659 Hz.wma", 4.04}}) {
        SCOPED_TRACE(testing::Message() << sample.name);
        player_.told();
        player_->setFileName(samplesFolder() + sample.name);
        ASSERT_TRUE(player_.untilTold(change(0, 2)));
        EXPECT_NEAR(player_->Duration(), sample.seconds, 0.15);
        ASSERT_TRUE(untilPast(0.1));
        const bool tagged = !sample.name.ends_with(L".wav");
        EXPECT_EQ(!player_->GetMediaInfoString(kClipTitle).empty(), tagged);
        EXPECT_EQ(!player_->GetMediaInfoString(kClipAuthor).empty(), tagged);
    }
}

TEST_F(Playing, pauseHoldsAndPlayGoesOn) {
    const DWORD opened = GetTickCount();
    player_->setFileName(toneFile(L"a.wav", kLong));
    ASSERT_TRUE(untilPast(0.3));
    expectPlayingFrom(0, opened);
    player_->Pause();
    const double held = player_->CurrentPosition();
    linger(400);
    EXPECT_NEAR(player_->CurrentPosition(), held, kHearing);
    player_->Pause();  // once more changes nothing
    const DWORD resumed = GetTickCount();
    player_->Play();
    player_->Next();  // a single file has no other
    player_->Previous();
    ASSERT_TRUE(untilPast(held + 0.3));
    expectPlayingFrom(held, resumed);
    EXPECT_EQ(player_.told(),
              (Notifications{kNewStream, change(0, 2), change(2, 1), change(1, 2)}));
}

TEST_F(Playing, seekingGoesToThePositionAndStopToTheStart) {
    player_->setFileName(toneFile(L"a.wav", kLong));
    ASSERT_TRUE(player_.untilTold(change(0, 2)));
    DWORD since = GetTickCount();
    player_->setCurrentPosition(10);
    expectPlayingFrom(10, since);
    ASSERT_TRUE(untilPast(10.3));
    since = GetTickCount();
    player_->setCurrentPosition(0.5);
    expectPlayingFrom(0.5, since);
    player_->Stop();
    player_->setCurrentPosition(0);
    EXPECT_NEAR(player_->CurrentPosition(), 0, 0.01);
    player_->Pause();  // what stands is not paused
    linger(200);
    EXPECT_EQ(player_.told(), (Notifications{kNewStream, change(0, 2), change(2, 0)}));
    since = GetTickCount();
    player_->Play();
    ASSERT_TRUE(untilPast(0.2));
    expectPlayingFrom(0, since);
    player_->setCurrentPosition(player_->Duration());
    ASSERT_TRUE(player_.untilTold(kEnd)) << "seeking to the end ends the clip";
}

TEST_F(Playing, whatCannotBePlayedIsToldOnceAndTheNextFilePlays) {
    const std::wstring good = toneFile(L"dobrý.wav", kLong);
    const std::wstring locked = toneFile(L"zamknutý.wav", 1.0);
    const FileHandle lock(
        CreateFileW(locked.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    for (const std::wstring& path :
         {folder_ / L"niet.mp3", folder_ / L"niet\\je.mp3", file(L"prázdny.mp3", ""),
          file(L"šum.mp3", noise(5000)), file(L"krátky.wav", tone(1.0).substr(0, 20)),
          file(L"text.wma", "toto nie je zvuk"), folder_.path(), std::wstring(L"??\x01*.mp3"),
          locked, std::wstring(L"E:\\") + std::wstring(3000, L'a') + L".mp3",
          file(L"prázdny.m3u", ""), file(L"zlý.m3u", "niet1.mp3\r\nniet2.mp3\r\n\0\0.mp3"),
          file(L"dlhý.pls", std::string(1 << 20, 'x')), folder_ / L"niet.pls"}) {
        SCOPED_TRACE(testing::Message() << path.substr(0, 80));
        player_->setFileName(path);
        ASSERT_TRUE(player_.untilTold(kError));
        linger(50);
        EXPECT_EQ(player_.told(), Notifications{kError});
        EXPECT_GT(player_->ErrorDescription().size(), 10u);
        EXPECT_EQ(player_->Duration(), 0);
        EXPECT_EQ(player_->CurrentPosition(), 0);
        player_->Pause();
        player_->Stop();
        player_->Next();
        player_->setCurrentPosition(1);
        player_->setFileName(good);
        ASSERT_TRUE(player_.untilTold(change(0, 2)));
        EXPECT_EQ(player_.told(), (Notifications{kNewStream, change(0, 2)}));
        EXPECT_EQ(player_->ErrorDescription(), L"");
    }
}

TEST_F(Playing, replacingAFileDropsWhatWasLeftOfIt) {
    const std::wstring first = toneFile(L"a.wav", 0.5), second = toneFile(L"b.wav", kLong);
    player_->setFileName(first);
    player_->setFileName(folder_ / L"niet.mp3");
    player_->setFileName(second);
    ASSERT_TRUE(player_.untilTold(change(0, 2)));
    linger(800);
    EXPECT_EQ(player_.told(), (Notifications{kNewStream, change(0, 2)}));
    EXPECT_NEAR(player_->Duration(), kLong, 0.01);
    player_->setFileName(L"");
    linger(100);
    EXPECT_EQ(player_.told(), Notifications{});
    EXPECT_EQ(player_->Duration(), 0);
    player_->Play();
    linger(100);
    EXPECT_EQ(player_.told(), Notifications{}) << "there is nothing to play";
}

// What feeds a decoder and what stops it run on different threads.
TEST_F(Playing, aPlayingFileIsReplacedAgainAndAgain) {
    const std::wstring folder = samplesFolder() + L"Skúšky\\";
    const std::wstring files[] = {folder + L"Tón 523 Hz.mp3", folder + L"Tón 659 Hz.wma",
                                  toneFile(L"a.wav", 0.5)};
    for (int turn = 0; turn < 15; ++turn) {
        player_->setFileName(files[turn % 3]);
        ASSERT_TRUE(player_.untilTold(change(0, 2)));
        player_.told();
    }
}

TEST_F(Playing, aReleasedFileMayBeDeleted) {
    for (const bool whileOpening : {false, true}) {
        const std::wstring path = toneFile(L"a.wav", kLong);
        player_->setFileName(path);
        if (!whileOpening) {
            ASSERT_TRUE(player_.untilTold(change(0, 2)));
        }
        player_->release();
        EXPECT_TRUE(DeleteFileW(path.c_str())) << GetLastError();
    }
}

TEST_F(Playing, aPlayerMayGoInEveryState) {
    const std::wstring path = toneFile(L"a.wav", 0.4);
    player_->setFileName(path);
    player_.destroy();
    linger(600);
    EXPECT_EQ(player_.told(), Notifications{});
}

TEST_F(Playing, aListPlaysEntryAfterEntryAndSkipsWhatIsBad) {
    toneFile(L"prvý.wav", kLong);
    toneFile(L"druhý.wav", kLong + 1);
    file(L"šum.wav", "RIFF nie je to ono");
    player_->setFileName(file(L"zoznam.m3u",
                              "#EXTM3U\r\nniet.wav\r\n#EXTINF:1,Anna - Prv\xFD\r\nprv\xFD.wav\r\n"
                              "\x9Aum.wav\r\n#EXTINF:1,Druh\xFD\r\ndruh\xFD.wav\r\nniet2.wav\r\n"));
    ASSERT_TRUE(player_.untilTold(change(0, 2)));
    EXPECT_NEAR(player_->Duration(), kLong, 0.01);
    EXPECT_EQ(player_->GetMediaInfoString(kClipAuthor), L"Anna");
    player_->setCurrentPosition(kLong - 0.3);
    ASSERT_TRUE(player_.untilTold(kNewStream));
    EXPECT_NEAR(player_->Duration(), kLong + 1, 0.01);
    EXPECT_LT(player_->CurrentPosition(), kLong / 2);
    player_->setCurrentPosition(kLong + 0.7);
    ASSERT_TRUE(player_.untilTold(kEnd));
    EXPECT_EQ(player_.told(),
              (Notifications{kNewStream, change(0, 2), kNewStream, change(2, 0), kEnd}));
    EXPECT_EQ(player_.titles(), (std::vector<std::wstring>{L"Prvý", L"Druhý"}));
    player_->Play();
    ASSERT_TRUE(player_.untilTold(change(0, 2))) << "the list starts again";
    EXPECT_EQ(player_.titles().back(), L"Prvý");
}

TEST_F(Playing, previousAndNextStepThroughAList) {
    toneFile(L"a.wav", kLong);
    toneFile(L"b.wav", kLong);
    toneFile(L"c.wav", kLong + 1);
    player_->setFileName(file(L"zoznam.pls",
                              "[playlist]\nFile1=a.wav\nTitle1=A\nFile2=b.wav\nTitle2=B\n"
                              "File3=c.wav\nTitle3=C\n"));
    player_->Next();  // asked before the list is open
    player_->Next();
    ASSERT_TRUE(runUntil([&] { return player_.titles().size() == 3; }));
    EXPECT_EQ(player_.titles(), (std::vector<std::wstring>{L"A", L"B", L"C"}));
    EXPECT_NEAR(player_->Duration(), kLong + 1, 0.01);
    player_->Next();
    linger(200);
    EXPECT_EQ(player_.titles().size(), 3u) << "nothing behind the last entry";
    player_->Previous();
    ASSERT_TRUE(runUntil([&] { return player_.titles().back() == L"B"; }));
    EXPECT_EQ(player_.told(),
              (Notifications{kNewStream, change(0, 2), kNewStream, kNewStream, kNewStream}));
    ASSERT_TRUE(untilPast(0.1));

    player_->Stop();
    player_->Previous();
    ASSERT_TRUE(runUntil([&] { return player_.titles().back() == L"A"; }));
    linger(200);
    EXPECT_EQ(player_->CurrentPosition(), 0) << "what was stopped stays stopped";
    EXPECT_EQ(player_.told(), (Notifications{change(2, 0), kNewStream}));
}

TEST_F(Playing, anAsxListPlaysToo) {
    toneFile(L"a.wav", 0.4);
    player_->setFileName(file(L"Zoznam.ASX",
                              "<asx version=\"3.0\">\r\n<entry>\r\n"
                              "<ref href=\"a.wav\"/>\r\n</entry>\r\n</asx>\r\n"));
    ASSERT_TRUE(player_.untilTold(kEnd));
    EXPECT_EQ(player_.told(), (Notifications{kNewStream, change(0, 2), change(2, 0), kEnd}));
}

TEST_F(Playing, aListWithoutAGoodEntryIsToldOnce) {
    std::string lines;
    for (int entry = 0; entry < 3000; ++entry) lines += "niet" + std::to_string(entry) + ".mp3\r\n";
    player_->setFileName(file(L"zoznam.m3u", lines));
    ASSERT_TRUE(player_.untilTold(kError));
    EXPECT_EQ(player_.told(), Notifications{kError});
}

}  // namespace
}  // namespace tunovka
