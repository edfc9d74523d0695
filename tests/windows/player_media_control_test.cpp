// The media control as an engine, against a stand-in that is registered for the length of a test.
#include <gtest/gtest.h>
#include <windows.h>

#include <deque>
#include <string>

#include "core/handle.h"
#include "player/directshow_engine.h"
#include "player/media_control_engine.h"
#include "support/beside_program.h"
#include "support/machine.h"
#include "support/scratch_folder.h"
#include "support/watched_player.h"
#include "windows/fake_control/fake_control.h"

namespace tunovka {
namespace {

constexpr wchar_t kClassId[] = L"{22D6F312-B0F6-11D0-94AB-0080C74C7E95}";
const std::wstring kClasses = L"Software\\Classes\\";
const std::wstring kProgram = kClasses + L"MediaPlayer.MediaPlayer.1";
const std::wstring kServer = kClasses + L"CLSID\\" + kClassId;

class MediaControl : public testing::Test {
  protected:
    void SetUp() override {
        const std::wstring server = besideThisProgram(L"fake_control.dll");
        library_ = Library(LoadLibraryW(server.c_str()));
        ASSERT_TRUE(library_);
        const auto entry = reinterpret_cast<FakeControlEntry>(
            reinterpret_cast<void*>(GetProcAddress(library_.get(), "fakeControl")));
        ASSERT_TRUE(entry);
        control_ = entry();
        setKey(kProgram, L"");
        setKey(kProgram + L"\\CLSID", kClassId);
        setKey(kServer, L"");
        setKey(kServer + L"\\InprocServer32", server);
        setKey(kServer + L"\\InprocServer32", L"Apartment", L"ThreadingModel");
        control_->takeCalls();
        control_->refuse(L"");
        control_->behaveLikeARealOne(false);
    }
    void TearDown() override {
        player_.destroy();
        EXPECT_EQ(control_->living(), 0) << "every reference is given back";
    }
    void setKey(const std::wstring& path, const std::wstring& text, const wchar_t* name = nullptr) {
        keys_.emplace_back(HKEY_LOCAL_MACHINE, path, name, text);
    }

    std::wstring calls() { return control_->takeCalls(); }

    // Opens a file that then plays.
    void openPlaying(const std::wstring& file) {
        player_->setFileName(file);
        control_->raise(L"OpenStateChange", 0, 6);
        control_->raise(L"PlayStateChange", 0, 2);
        ASSERT_TRUE(player_.untilTold(change(0, 2)));
        player_.told();
        calls();
    }

    std::deque<TestKey> keys_;
    Library library_;
    FakeControl* control_ = nullptr;
    WatchedPlayer player_{createMediaEngine};
};

TEST_F(MediaControl, isHostedUnseenAndAskedByNames) {
    player_->setVolume(-1500);
    EXPECT_EQ(calls(), L"") << "not before a file is opened";
    player_->setFileName(L"E:\\Ľudové\\ľubezná.wma");
    EXPECT_EQ(calls(),
              L"SetClientSite;InitNew;InPlaceActivate;AutoStart=-1;Volume=-1500;"
              L"FileName=E:\\Ľudové\\ľubezná.wma;");
    EXPECT_TRUE(control_->activeInPlace());
    EXPECT_FALSE(control_->seen());

    control_->setNumber(L"Duration", 61.5);
    control_->setNumber(L"CurrentPosition", 2.25);
    control_->setText(L"GetMediaInfoString8", L"Ľúbezná");
    control_->setText(L"GetMediaInfoString9", L"Žofia");
    EXPECT_EQ(player_->Duration(), 61.5);
    EXPECT_EQ(player_->CurrentPosition(), 2.25);
    EXPECT_EQ(player_->GetMediaInfoString(8), L"Ľúbezná");
    EXPECT_EQ(player_->GetMediaInfoString(9), L"Žofia");
    control_->setNumber(L"Duration", -1);
    EXPECT_EQ(player_->Duration(), 0) << "not known";

    control_->raise(L"PlayStateChange", 0, 2);
    player_->Pause();
    player_->Play();
    player_->setCurrentPosition(30);
    player_->setVolume(0);
    player_->Stop();
    player_->Previous();
    player_->Next();
    player_->release();
    EXPECT_EQ(calls(),
              L"Pause;Play;CurrentPosition=30;Volume=0;Stop;Previous;Next;Stop;FileName=;");
    EXPECT_EQ(player_->Duration(), 0);
    player_.destroy();
    EXPECT_EQ(calls(), L"InPlaceDeactivate;Close;SetClientSite(none);");
}

TEST_F(MediaControl, tellsTheSameInTheSameOrderAsTheOtherEngine) {
    control_->behaveLikeARealOne(true);
    for (const wchar_t* file : {L"E:\\a.mp3", L"E:\\b.mp3"}) {
        player_->setFileName(file);
        player_->Pause();
        player_->Play();
        EXPECT_EQ(player_.told(), Notifications{}) << "never from inside a call";
        control_->raise(L"PlayStateChange", 2, 0);
        control_->raise(L"EndOfStream", 0);
        ASSERT_TRUE(player_.untilTold(kEnd));
        EXPECT_EQ(player_.told(), (Notifications{kNewStream, change(0, 2), change(2, 1),
                                                 change(1, 2), change(2, 0), kEnd}));
    }
    player_->setFileName(L"E:\\zoznam.m3u");
    player_->Next();
    player_->Stop();
    ASSERT_TRUE(player_.untilTold(change(2, 0)));
    EXPECT_EQ(player_.told(), (Notifications{kNewStream, change(0, 2), kNewStream, change(2, 0)}));
}

TEST_F(MediaControl, lateEventsOfAReplacedFileAreDropped) {
    openPlaying(L"E:\\a.mp3");
    control_->raise(L"EndOfStream", 0);
    player_->setFileName(L"E:\\b.mp3");
    control_->raise(L"PlayStateChange", 2, 0);
    control_->raise(L"EndOfStream", 0);
    WatchedPlayer::linger(50);
    EXPECT_EQ(player_.told(), Notifications{});
    control_->raise(L"ReadyStateChange", 4);
    control_->raise(L"PlayStateChange", 0, 3);  // waiting for data is no state
    control_->raise(L"PlayStateChange", 3, 2);
    ASSERT_TRUE(player_.untilTold(change(0, 2)));
    EXPECT_EQ(player_.told(), (Notifications{kNewStream, change(0, 2)}));
}

TEST_F(MediaControl, stoppingWhatIsStillOpeningKeepsItSilent) {
    player_->setFileName(L"E:\\a.mp3");
    player_->Stop();
    calls();
    control_->raise(L"PlayStateChange", 0, 2);
    EXPECT_EQ(calls(), L"Stop;");
    player_->Play();
    control_->raise(L"PlayStateChange", 0, 2);
    ASSERT_TRUE(player_.untilTold(change(0, 2)));
}

TEST_F(MediaControl, aFailureIsToldOnceWithTheControlsOwnWords) {
    player_->setFileName(L"E:\\a.mp3");
    control_->setText(L"ErrorDescription", L"Súbor je poškodený.");
    control_->raise(L"Error");
    control_->raise(L"Error");
    ASSERT_TRUE(player_.untilTold(kError));
    EXPECT_EQ(player_.told(), Notifications{kError});
    EXPECT_EQ(player_->ErrorDescription(), L"Súbor je poškodený.");
    calls();
    player_->Play();
    EXPECT_EQ(calls(), L"FileName=E:\\a.mp3;") << "what failed is opened again";

    control_->refuse(L"FileName");
    player_->setFileName(L"E:\\b.mp3");
    ASSERT_TRUE(player_.untilTold(kError)) << "refused at once";
    EXPECT_EQ(player_->ErrorDescription(), L"Odmietnuté.");
    control_->refuse(L"Play");
    openPlaying(L"E:\\c.mp3");
    player_->Play();
    ASSERT_TRUE(player_.untilTold(kError));
    EXPECT_EQ(player_.told(), (Notifications{change(2, 0), kError}));
}

TEST_F(MediaControl, eventsAreFoundWithoutTheClassInformationToo) {
    control_->refuse(L"classInfo");
    openPlaying(L"E:\\a.mp3");
}

TEST_F(MediaControl, eventsAfterTheEndReachNobody) {
    openPlaying(L"E:\\a.mp3");
    control_->raise(L"EndOfStream", 0);
    player_.destroy();
    control_->raise(L"EndOfStream", 0);
    WatchedPlayer::linger(50);
    EXPECT_EQ(player_.told(), Notifications{});
}

// Which engine plays is asked of the choice itself.
bool controlIsChosen() {
    const auto engine = createMediaEngine([](const MediaNotification&) {});
    return dynamic_cast<MediaControlEngine*>(engine.get()) != nullptr;
}

TEST_F(MediaControl, isChosenOnlyWhereItWorks) {
    EXPECT_TRUE(controlIsChosen());
    for (const wchar_t* failing : {L"create", L"activate", L"events"}) {
        control_->refuse(failing);
        EXPECT_FALSE(controlIsChosen()) << failing;
        EXPECT_EQ(control_->living(), 0) << failing;
    }
    control_->refuse(L"");
    setKey(kServer + L"\\InprocServer32", L"E:\\niet\\takého.dll");
    EXPECT_FALSE(controlIsChosen()) << "its file is gone";
    keys_.clear();
    EXPECT_FALSE(controlIsChosen()) << "not registered";
    const ScratchFolder folder;
    player_->setFileName(folder.file(L"nie je zvuk.mp3", "x"));
    ASSERT_TRUE(player_.untilTold(kError)) << "the other engine serves";
    EXPECT_EQ(calls().find(L"FileName"), std::wstring::npos);
}

}  // namespace
}  // namespace tunovka
