// The player over the system's filter graphs: real files into the stage's silent sound device.
#include <gtest/gtest.h>
#include <windows.h>
// windows.h first: this one needs its types.
#include <vfwmsgs.h>

#include "player/media_engine.h"
#include "support/player_watch.h"

namespace tunovka {
namespace {

constexpr double kHearing = 0.2;  // seconds by which a position may be off
constexpr double kLong = 20;      // seconds of a tone whose end no test hears

class Playing : public testing::Test {
  protected:
    std::wstring toneFile(const std::wstring& name, double seconds) {
        return folder_.file(name, tone(seconds));
    }
    bool untilPast(double seconds) {
        return runUntil([&] { return player_->CurrentPosition() > seconds; });
    }
    // Whether the position moves on from one place as time does.
    bool goesOnFrom(double place) {
        const DWORD start = GetTickCount();
        return untilPast(place + 0.3) &&
               player_->CurrentPosition() <= place + (GetTickCount() - start) / 1000.0 + kHearing;
    }

    ScratchFolder folder_;
    WatchedPlayer player_{createFilterGraph};
};

TEST_F(Playing, everyKindPlaysWithTheTitleOfItsTagToItsEnd) {
    for (const auto& [name, seconds, title] : {std::tuple{L"Ladička 440 Hz.wav", 4.0, false},
                                               {L"Tón 523 Hz.mp3", 4.1, true},
                                               {L"Tón 659 Hz.wma", 4.04, true}}) {
        SCOPED_TRACE(testing::Message() << name);
        const DWORD opened = GetTickCount();
        player_->setFileName(samplesFolder() + L"Skúšky\\" + name);
        EXPECT_EQ(player_.told(), L"") << "never from inside a call";
        ASSERT_TRUE(player_.untilTold(L"0-2 "));
        EXPECT_NEAR(player_->Duration(), seconds, 0.15);
        EXPECT_EQ(!player_->details().title.empty(), title);
        EXPECT_EQ(!player_->details().author.empty(), title);
        ASSERT_TRUE(player_.untilTold(L"end "));
        EXPECT_GE(GetTickCount() - opened, 3000u);
        EXPECT_EQ(player_.told(), L"new 0-2 2-0 end ");
    }
    player_->Play();
    ASSERT_TRUE(player_.untilTold(L"0-2 ")) << "from the start once more";
}

TEST_F(Playing, pauseHoldsSeekingLeadsAndStopFreesTheFile) {
    const std::wstring path = toneFile(L"a.wav", kLong);
    player_->setFileName(path);
    player_->Pause();
    ASSERT_TRUE(player_.untilTold(L"0-1 ")) << "remembered while it was opening";
    EXPECT_EQ(player_.told(), L"new 0-1 ");
    EXPECT_TRUE(isHeld(path));
    player_->Play();
    EXPECT_TRUE(goesOnFrom(0));
    player_->Pause();
    ASSERT_TRUE(player_.untilTold(L"2-1 "));
    const double place = player_->CurrentPosition();
    player_->Play();
    EXPECT_TRUE(goesOnFrom(place));
    player_->setCurrentPosition(10);
    EXPECT_EQ(player_->CurrentPosition(), 10) << "at once";
    EXPECT_TRUE(goesOnFrom(10));
    player_->Stop();
    ASSERT_TRUE(player_.untilTold(L"2-0 "));
    EXPECT_EQ(player_->CurrentPosition(), 0);
    EXPECT_FALSE(isHeld(path));
    player_->Play();
    EXPECT_TRUE(goesOnFrom(0));
    player_->setCurrentPosition(player_->Duration());
    ASSERT_TRUE(player_.untilTold(L"end ")) << "seeking to the end ends the clip";
    player_->setFileName(path);
    player_->release();
    EXPECT_TRUE(DeleteFileW(path.c_str())) << "a released file is free, though it was opening";
}

TEST_F(Playing, whatCannotBePlayedIsToldOnceAndTheNextFilePlays) {
    const auto file = [&](const wchar_t* name, const std::string& content) {
        return folder_.file(name, content);
    };
    const std::wstring good = toneFile(L"dobrý.wav", kLong);
    const std::wstring denied = toneFile(L"zamknutý.wav", 1.0);
    const FileHandle lock = locked(denied);
    for (const std::wstring& path :
         {folder_ / L"niet\\je.mp3", file(L"prázdny.mp3", ""), file(L"šum.wav", noise(200'000)),
          file(L"krátky.wav", tone(1.0).substr(0, 20)), file(L"text.wma", "toto nie je zvuk"),
          folder_.path(), std::wstring(L"??\x01*.mp3"), denied,
          L"E:\\" + std::wstring(3000, L'a') + L".mp3", file(L"prázdny.m3u", ""),
          file(L"zlý.m3u", "niet1.mp3\r\nniet2.mp3\r\n\0\0.mp3"), folder_ / L"niet.pls"}) {
        SCOPED_TRACE(testing::Message() << path.substr(0, 80));
        player_->setFileName(path);
        ASSERT_TRUE(player_.untilTold(L"error "));
        EXPECT_GT(player_->ErrorDescription().size(), 10u);
        EXPECT_EQ(player_->Duration(), 0);
        player_->Pause();
        player_->Next();
        player_->setCurrentPosition(1);
        player_->setFileName(good);
        ASSERT_TRUE(player_.untilTold(L"0-2 "));
        EXPECT_EQ(player_.told(), L"error new 0-2 ");
        EXPECT_EQ(player_->ErrorDescription(), L"");
    }
}

TEST(PlaybackErrors, tellAMissingCodecFromABrokenFileAndNeverSuccess) {
    for (const auto& [error, part] :
         {std::pair<HRESULT, const wchar_t*>{VFW_E_UNSUPPORTED_AUDIO,
                                             L"chýba kodek pre tento zvuk. "},
          {VFW_E_CANNOT_RENDER, L"kodek pre tento zvuk alebo je súbor poškodený."},
          {VFW_E_INVALID_FILE_FORMAT, L"nie je zvuk"},
          {HRESULT_FROM_WIN32(ERROR_SHARING_VIOLATION), L"nie je prístup"},
          {HRESULT_FROM_WIN32(ERROR_DISK_CORRUPT), L"(0x80070571)"},
          {S_OK, L" Neznáma chyba (0x00000000) "},
          {VFW_S_PARTIAL_RENDER, L" Neznáma chyba (0x00040242) "}})
        EXPECT_NE(playbackTrouble(error).text.find(part), std::wstring::npos)
            << playbackTrouble(error).text;
}

}  // namespace
}  // namespace tunovka
