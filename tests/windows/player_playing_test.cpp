// The filter-graph engine plays real files into the stage's silent sound device.
#include <gtest/gtest.h>
#include <windows.h>

#include <cmath>
#include <string>
#include <vector>

#include "core/events.h"
#include "core/file_system.h"
#include "player/directshow_engine.h"
#include "player/media_player.h"
#include "support/samples.h"

namespace tunovka {
namespace {

using Kind = MediaNotification::Kind;
using Notifications = std::vector<MediaNotification>;

constexpr MediaNotification kNewStream{Kind::NewStream};
constexpr MediaNotification kError{Kind::Error};
constexpr MediaNotification kEnd{Kind::EndOfStream, kPlayedToEnd};
constexpr MediaNotification change(int from, int to) {
    return {Kind::PlayStateChange, from, to};
}
constexpr double kHearing = 0.15;  // seconds by which a position may be off

std::string tone(double seconds) {
    constexpr int rate = 22050;
    const auto samples = static_cast<int>(seconds * rate);
    const auto number = [](std::uint32_t value, int bytes) {
        std::string result;
        for (; bytes-- > 0; value >>= 8) result += static_cast<char>(value & 0xFF);
        return result;
    };
    std::string data;
    for (int at = 0; at < samples; ++at)
        data += number(static_cast<std::uint16_t>(std::lround(9000 * std::sin(at * 0.125))), 2);
    return "RIFF" + number(36 + data.size(), 4) + "WAVEfmt " + number(16, 4) + number(1, 2) +
           number(1, 2) + number(rate, 4) + number(rate * 2, 4) + number(2, 2) + number(16, 2) +
           "data" + number(data.size(), 4) + data;
}

class Playing : public testing::Test {
  protected:
    Playing() {
        const std::wstring name = L"T:\\hranie-" + std::to_wstring(GetCurrentProcessId()) + L"-" +
                                  std::to_wstring(GetTickCount());
        CreateDirectoryW(name.c_str(), nullptr);
        folder_ = name + L"\\";
        player_ = std::make_unique<MediaPlayer>(
            [](MediaListener listener) {
                return std::make_unique<DirectShowEngine>(std::move(listener));
            },
            postToLoop);
        player_->NewStream = [this] {
            told_.push_back(kNewStream);
            titles_.push_back(player_->GetMediaInfoString(kClipTitle));
        };
        player_->Error = [this] { told_.push_back(kError); };
        player_->EndOfStream = [this](int result) { told_.push_back({Kind::EndOfStream, result}); };
        player_->PlayStateChange = [this](int from, int to) { told_.push_back(change(from, to)); };
    }
    ~Playing() override {
        player_.reset();
        for (const FolderEntry& entry : FileSystemObject::listFolder(folder_))
            DeleteFileW((folder_ + entry.name).c_str());
        RemoveDirectoryW(folder_.c_str());
    }

    std::wstring file(const std::wstring& name, const std::string& content) {
        const std::wstring path = folder_ + name;
        FileSystemObject::writeWhole(path, content);
        return path;
    }
    std::wstring toneFile(const std::wstring& name, double seconds) {
        return file(name, tone(seconds));
    }

    template <typename Condition>
    bool until(Condition reached, DWORD limit = 15000) {
        const DWORD start = GetTickCount();
        while (!reached()) {
            if (GetTickCount() - start > limit) return false;
            MsgWaitForMultipleObjects(0, nullptr, FALSE, 5, QS_ALLINPUT);
            yieldNow();
        }
        return true;
    }
    bool untilTold(const MediaNotification& what) {
        return until([&] { return !told_.empty() && told_.back() == what; });
    }
    // Lets the loop run for a while in which nothing is to happen.
    void linger(DWORD milliseconds) {
        until([] { return false; }, milliseconds);
    }
    Notifications told() { return std::exchange(told_, {}); }

    std::wstring folder_;
    Notifications told_;
    std::vector<std::wstring> titles_;
    std::unique_ptr<MediaPlayer> player_;
};

TEST_F(Playing, aToneFromItsStartToItsEnd) {
    const std::wstring path = toneFile(L"tón.wav", 1.0);
    player_->setFileName(path);
    EXPECT_EQ(told(), Notifications{});
    ASSERT_TRUE(untilTold(change(0, 2)));
    EXPECT_NEAR(player_->Duration(), 1.0, 0.01);
    ASSERT_TRUE(until([&] { return player_->CurrentPosition() > 0.3; }));
    const DWORD heard = GetTickCount();
    const double from = player_->CurrentPosition();
    ASSERT_TRUE(until([&] { return player_->CurrentPosition() > 0.7; }));
    EXPECT_NEAR(player_->CurrentPosition() - from, (GetTickCount() - heard) / 1000.0, kHearing);
    ASSERT_TRUE(untilTold(kEnd));
    EXPECT_EQ(told(), (Notifications{kNewStream, change(0, 2), change(2, 0), kEnd}));
    linger(300);
    EXPECT_EQ(told(), Notifications{}) << "the end comes once";

    player_->Play();
    ASSERT_TRUE(untilTold(kEnd)) << "played again from the start";
    EXPECT_EQ(told(), (Notifications{change(0, 2), change(2, 0), kEnd}));
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
        told();
        player_->setFileName(testing_support::samplesFolder() + sample.name);
        ASSERT_TRUE(untilTold(change(0, 2)));
        EXPECT_NEAR(player_->Duration(), sample.seconds, 0.15);
        ASSERT_TRUE(until([&] { return player_->CurrentPosition() > 0.1; }));
        const bool tagged = !sample.name.ends_with(L".wav");
        EXPECT_EQ(!player_->GetMediaInfoString(kClipTitle).empty(), tagged);
        EXPECT_EQ(!player_->GetMediaInfoString(kClipAuthor).empty(), tagged);
    }
}

TEST_F(Playing, pauseHoldsAndPlayGoesOn) {
    player_->setFileName(toneFile(L"a.wav", 3.0));
    ASSERT_TRUE(until([&] { return player_->CurrentPosition() > 0.3; }));
    player_->Pause();
    const double held = player_->CurrentPosition();
    linger(400);
    EXPECT_NEAR(player_->CurrentPosition(), held, kHearing);
    player_->Pause();  // once more changes nothing
    player_->Play();
    ASSERT_TRUE(until([&] { return player_->CurrentPosition() > held + 0.3; }));
    EXPECT_LT(player_->CurrentPosition(), held + 0.6);
    EXPECT_EQ(told(), (Notifications{kNewStream, change(0, 2), change(2, 1), change(1, 2)}));
}

TEST_F(Playing, seekingGoesToThePositionAndStopToTheStart) {
    player_->setFileName(toneFile(L"a.wav", 4.0));
    ASSERT_TRUE(untilTold(change(0, 2)));
    player_->setCurrentPosition(2.0);
    EXPECT_NEAR(player_->CurrentPosition(), 2.0, kHearing);
    ASSERT_TRUE(until([&] { return player_->CurrentPosition() > 2.3; }));
    player_->setCurrentPosition(0.5);
    EXPECT_NEAR(player_->CurrentPosition(), 0.5, kHearing);
    player_->Stop();
    player_->setCurrentPosition(0);
    EXPECT_NEAR(player_->CurrentPosition(), 0, 0.01);
    player_->Pause();  // what stands is not paused
    linger(200);
    EXPECT_EQ(told(), (Notifications{kNewStream, change(0, 2), change(2, 0)}));
    player_->Play();
    ASSERT_TRUE(until([&] { return player_->CurrentPosition() > 0.2; }));
    EXPECT_LT(player_->CurrentPosition(), 0.6);
    player_->setCurrentPosition(player_->Duration());
    ASSERT_TRUE(untilTold(kEnd)) << "seeking to the end ends the clip";
}

TEST_F(Playing, volumeIsKeptFromFileToFile) {
    player_->setVolume(-4000);
    player_->setFileName(toneFile(L"a.wav", 1.0));
    ASSERT_TRUE(untilTold(change(0, 2)));
    EXPECT_EQ(player_->Volume(), -4000);
    player_->setVolume(-1);
    EXPECT_EQ(player_->Volume(), -1);
}

TEST_F(Playing, whatCannotBePlayedIsToldOnceAndTheNextFilePlays) {
    const std::wstring good = toneFile(L"dobrý.wav", 1.0);
    std::string noise(5000, '\0');
    for (std::size_t at = 0; at < noise.size(); ++at) noise[at] = static_cast<char>(at * 7919 >> 5);
    const std::wstring locked = toneFile(L"zamknutý.wav", 1.0);
    const FileHandle lock(
        CreateFileW(locked.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    for (const std::wstring& path :
         {folder_ + L"niet.mp3", folder_ + L"niet\\je.mp3", file(L"prázdny.mp3", ""),
          file(L"šum.mp3", noise), file(L"krátky.wav", tone(1.0).substr(0, 20)),
          file(L"text.wma", "toto nie je zvuk"), folder_, std::wstring(L"??\x01*.mp3"), locked,
          std::wstring(L"E:\\") + std::wstring(3000, L'a') + L".mp3", file(L"prázdny.m3u", ""),
          file(L"zlý.m3u", "niet1.mp3\r\nniet2.mp3\r\n\0\0.mp3"),
          file(L"dlhý.pls", std::string(1 << 20, 'x')), folder_ + L"niet.pls"}) {
        SCOPED_TRACE(testing::Message() << path.substr(0, 80));
        player_->setFileName(path);
        ASSERT_TRUE(untilTold(kError));
        linger(50);
        EXPECT_EQ(told(), Notifications{kError});
        EXPECT_GT(player_->ErrorDescription().size(), 10u);
        EXPECT_EQ(player_->Duration(), 0);
        EXPECT_EQ(player_->CurrentPosition(), 0);
        player_->Pause();
        player_->Stop();
        player_->Next();
        player_->setCurrentPosition(1);
        player_->setFileName(good);
        ASSERT_TRUE(untilTold(change(0, 2)));
        EXPECT_EQ(told(), (Notifications{kNewStream, change(0, 2)}));
        EXPECT_EQ(player_->ErrorDescription(), L"");
    }
}

TEST_F(Playing, replacingAFileDropsWhatWasLeftOfIt) {
    const std::wstring first = toneFile(L"a.wav", 0.5), second = toneFile(L"b.wav", 2.0);
    player_->setFileName(first);
    player_->setFileName(folder_ + L"niet.mp3");
    player_->setFileName(second);
    ASSERT_TRUE(untilTold(change(0, 2)));
    linger(800);
    EXPECT_EQ(told(), (Notifications{kNewStream, change(0, 2)}));
    EXPECT_NEAR(player_->Duration(), 2.0, 0.01);
    player_->setFileName(L"");
    linger(100);
    EXPECT_EQ(told(), Notifications{});
    EXPECT_EQ(player_->Duration(), 0);
    player_->Play();
    linger(100);
    EXPECT_EQ(told(), Notifications{}) << "there is nothing to play";
}

TEST_F(Playing, aReleasedFileMayBeDeleted) {
    for (const bool whileOpening : {false, true}) {
        const std::wstring path = toneFile(L"a.wav", 2.0);
        player_->setFileName(path);
        if (!whileOpening) {
            ASSERT_TRUE(untilTold(change(0, 2)));
        }
        player_->release();
        EXPECT_TRUE(DeleteFileW(path.c_str())) << GetLastError();
    }
}

TEST_F(Playing, aPlayerMayGoInEveryState) {
    const std::wstring path = toneFile(L"a.wav", 0.4);
    player_->setFileName(path);
    player_.reset();
    linger(600);
    EXPECT_EQ(told(), Notifications{});
}

TEST_F(Playing, aListPlaysEntryAfterEntryAndSkipsWhatIsBad) {
    toneFile(L"prvý.wav", 0.5);
    toneFile(L"druhý.wav", 0.7);
    file(L"šum.wav", "RIFF nie je to ono");
    player_->setFileName(file(L"zoznam.m3u",
                              "#EXTM3U\r\nniet.wav\r\n#EXTINF:1,Anna - Prv\xFD\r\nprv\xFD.wav\r\n"
                              "\x9Aum.wav\r\n#EXTINF:1,Druh\xFD\r\ndruh\xFD.wav\r\nniet2.wav\r\n"));
    ASSERT_TRUE(untilTold(change(0, 2)));
    EXPECT_NEAR(player_->Duration(), 0.5, 0.01);
    EXPECT_EQ(player_->GetMediaInfoString(kClipAuthor), L"Anna");
    ASSERT_TRUE(untilTold(kNewStream));
    EXPECT_NEAR(player_->Duration(), 0.7, 0.01);
    EXPECT_LT(player_->CurrentPosition(), 0.5);
    ASSERT_TRUE(untilTold(kEnd));
    EXPECT_EQ(told(), (Notifications{kNewStream, change(0, 2), kNewStream, change(2, 0), kEnd}));
    EXPECT_EQ(titles_, (std::vector<std::wstring>{L"Prvý", L"Druhý"}));
    player_->Play();
    ASSERT_TRUE(untilTold(change(0, 2))) << "the list starts again";
    EXPECT_EQ(titles_.back(), L"Prvý");
}

TEST_F(Playing, previousAndNextStepThroughAList) {
    toneFile(L"a.wav", 2.0);
    toneFile(L"b.wav", 2.2);
    toneFile(L"c.wav", 2.4);
    player_->setFileName(file(L"zoznam.pls",
                              "[playlist]\nFile1=a.wav\nTitle1=A\nFile2=b.wav\nTitle2=B\n"
                              "File3=c.wav\nTitle3=C\n"));
    player_->Next();  // asked before the list is open
    player_->Next();
    ASSERT_TRUE(until([&] { return titles_.size() == 3; }));
    EXPECT_EQ(titles_, (std::vector<std::wstring>{L"A", L"B", L"C"}));
    EXPECT_NEAR(player_->Duration(), 2.4, 0.01);
    player_->Next();
    linger(200);
    EXPECT_EQ(titles_.size(), 3u) << "nothing behind the last entry";
    player_->Previous();
    ASSERT_TRUE(until([&] { return titles_.back() == L"B"; }));
    EXPECT_EQ(told(),
              (Notifications{kNewStream, change(0, 2), kNewStream, kNewStream, kNewStream}));
    ASSERT_TRUE(until([&] { return player_->CurrentPosition() > 0.1; }));

    player_->Stop();
    player_->Previous();
    ASSERT_TRUE(until([&] { return titles_.back() == L"A"; }));
    linger(200);
    EXPECT_EQ(player_->CurrentPosition(), 0) << "what was stopped stays stopped";
    EXPECT_EQ(told(), (Notifications{change(2, 0), kNewStream}));
}

TEST_F(Playing, stepsDoNothingForASingleFile) {
    player_->setFileName(toneFile(L"a.wav", 1.0));
    ASSERT_TRUE(untilTold(change(0, 2)));
    player_->Next();
    player_->Previous();
    linger(150);
    EXPECT_EQ(told(), (Notifications{kNewStream, change(0, 2)}));
}

TEST_F(Playing, anAsxListPlaysToo) {
    toneFile(L"a.wav", 0.4);
    player_->setFileName(file(L"Zoznam.ASX",
                              "<asx version=\"3.0\">\r\n<entry>\r\n"
                              "<ref href=\"a.wav\"/>\r\n</entry>\r\n</asx>\r\n"));
    ASSERT_TRUE(untilTold(kEnd));
    EXPECT_EQ(told(), (Notifications{kNewStream, change(0, 2), change(2, 0), kEnd}));
}

TEST_F(Playing, theWindowsAnswerWhileAListIsSearchedForAGoodEntry) {
    std::string lines;
    for (int entry = 0; entry < 3000; ++entry) lines += "niet" + std::to_string(entry) + ".mp3\r\n";
    const DWORD start = GetTickCount();
    player_->setFileName(file(L"zoznam.m3u", lines));
    EXPECT_LT(GetTickCount() - start, 500u) << "setting the file does not wait for it";
    ASSERT_TRUE(untilTold(kError));
    EXPECT_EQ(told(), Notifications{kError});
}

}  // namespace
}  // namespace tunovka
