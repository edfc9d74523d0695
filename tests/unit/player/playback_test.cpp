// The player without its thread, over an engine that does what the test says.
#include "player/playback.h"

#include <gtest/gtest.h>

#include <set>

#include "support/told.h"

namespace tunovka {
namespace {

using Kind = EngineEvent::Kind;

struct FakeEngine : MediaEngine {
    bool takesLists() const override { return takes; }
    std::optional<PlaybackTrouble> open(const std::wstring& file) override {
        did += L"open " + file + L";";
        if (bad.contains(file)) return PlaybackTrouble{L"zlý", file == L"nič nehrá"};
        if (!late) observe({Kind::Opened});
        return std::nullopt;
    }
    void close() override {
        did += L"close;";
        observed_.clear();
    }
    void play() override {
        if (!late) observe({Kind::StateIs, PlayState::Playing});
    }
    void pause() override { observe({Kind::StateIs, PlayState::Paused}); }
    void seek(double seconds) override { did += L"seek " + std::to_wstring(int(seconds)) + L";"; }
    double duration() const override { return 10; }
    double position() const override { return 3; }
    ClipDetails details() const override { return {}; }
    void setVolume(int) override {}
    using MediaEngine::observe;

    bool takes = false;
    bool late = false;  // opens and plays by events of the test
    std::set<std::wstring> bad;
    std::wstring did;
};

class PlaybackTest : public testing::Test {
  protected:
    void proceed() {
        while (playback->proceed()) {
        }
    }
    void open(const std::wstring& file) {
        playback.emplace(
            engine, file,
            [this, file] {
                if (file == L"niet.m3u") throw RuntimeError(kFileNotFound);
                return file.ends_with(L".m3u") ? list : std::vector<ListedFile>{{file, {}}};
            },
            [this](const MediaNotification& what) { told_ += inShort(what); });
        engine.did.clear();
        proceed();
    }
    void want(PlayState state) {
        playback->want(state);
        proceed();
    }
    void step(int way) {
        playback->step(way);
        proceed();
    }
    void happens(const EngineEvent& event) {
        engine.observe(event);
        proceed();
    }
    void fails(const wchar_t* text) { happens({.kind = Kind::Failed, .trouble = {text}}); }
    // What was told and what the engine did since the last asking.
    std::wstring told() { return std::exchange(told_, {}); }
    std::wstring did() { return std::exchange(engine.did, {}); }

    FakeEngine engine;
    std::vector<ListedFile> list = {{L"a", {L"A", L""}}, {L"b", {}}, {L"c", {}}};
    std::wstring told_;
    std::optional<Playback> playback;
};

TEST_F(PlaybackTest, tellsOpeningPauseStopAndEndInOneOrder) {
    open(L"x.mp3");
    EXPECT_EQ(told(), L"new 0-2 ");
    want(PlayState::Paused);
    EXPECT_EQ(did(), L"open x.mp3;") << "pause holds the file";
    want(PlayState::Playing);
    EXPECT_EQ(told(), L"2-1 1-2 ");
    want(PlayState::Stopped);
    EXPECT_EQ(did(), L"close;") << "stop does not";
    EXPECT_EQ(playback->duration(), 10);
    EXPECT_EQ(playback->position(), 0);
    want(PlayState::Paused);
    want(PlayState::Playing);
    happens({Kind::Ended});
    EXPECT_EQ(told(), L"2-0 new 0-2 2-0 end ");
    EXPECT_EQ(did(), L"open x.mp3;close;");
    happens({Kind::Ended});
    EXPECT_EQ(told(), L"") << "late, of the file before";
}

TEST_F(PlaybackTest, whatIsWantedWhileAFileOpensIsDoneWhenItIsThere) {
    engine.late = true;
    open(L"x.mp3");
    want(PlayState::Paused);
    engine.observe({Kind::Opened});
    happens({Kind::StateIs, PlayState::Playing});  // it starts by itself
    EXPECT_EQ(told(), L"new 0-1 ");
    open(L"y.mp3");
    playback->want(PlayState::Stopped);
    happens({Kind::Opened});
    EXPECT_EQ(did(), L"open y.mp3;close;");
    EXPECT_EQ(told(), L"");
}

TEST_F(PlaybackTest, aFailureIsToldOnceAndPlayingTriesAgain) {
    engine.bad = {L"x.mp3"};
    open(L"x.mp3");
    EXPECT_EQ(playback->error(), L"zlý");
    engine.bad = {};
    want(PlayState::Playing);
    EXPECT_EQ(told(), L"error new 0-2 ");
    EXPECT_EQ(playback->error(), L"");
    fails(L"prasklo");
    fails(L"znova");
    EXPECT_EQ(told(), L"2-0 error ");
    EXPECT_EQ(playback->error(), L"prasklo");
    open(L"niet.m3u");
    EXPECT_EQ(playback->error(), L" Súbor sa nenašiel ");
}

TEST_F(PlaybackTest, aListIsSteppedThroughAndWhatIsBadIsPassedOver) {
    engine.bad = {L"b"};
    open(L"l.m3u");
    EXPECT_EQ(playback->details().title, L"A") << "as the list tells";
    step(1);
    EXPECT_EQ(did(), L"open a;close;open b;close;open c;");
    step(1);
    step(-1);
    EXPECT_EQ(told(), L"new 0-2 new new ");
    want(PlayState::Stopped);
    step(1);
    did();
    want(PlayState::Playing);
    EXPECT_EQ(did(), L"open b;close;open c;");
    happens({Kind::Ended});
    EXPECT_EQ(told(), L"2-0 new 0-2 2-0 end ");
    did();
    want(PlayState::Playing);
    EXPECT_EQ(did(), L"open a;") << "from the start";
    happens({Kind::Ended});
    EXPECT_EQ(told(), L"new 0-2 new ") << "the end of an entry is not the end";
    step(-1);
    engine.bad = {L"b", L"c"};
    did();
    step(1);
    EXPECT_EQ(did(), L"close;open b;close;open c;close;open a;seek 3;")
        << "nothing that way: it goes on";
    told();
    happens({Kind::Ended});
    EXPECT_EQ(told(), L"2-0 end ");
}

TEST_F(PlaybackTest, aListWithoutAGoodEntryIsToldOnce) {
    engine.bad = {L"a", L"b", L"c"};
    open(L"l.m3u");
    EXPECT_EQ(told(), L"error ");
    EXPECT_NE(playback->error().find(L"neodkazuje"), std::wstring::npos);
    list = {{L"nič nehrá", {}}, {L"c", {}}};
    engine.bad.insert(L"nič nehrá");
    open(L"l.m3u");
    EXPECT_EQ(did(), L"open nič nehrá;close;") << "no device: the others would not play either";
    EXPECT_EQ(playback->error(), L"zlý");
}

TEST_F(PlaybackTest, aListThatTheEngineRefusesLaterIsSteppedByUsBeforeAnythingIsTold) {
    engine.takes = engine.late = true;
    open(L"l.m3u");
    fails(L"zoznam nie");
    fails(L"a nie");
    engine.observe({Kind::Opened});
    happens({Kind::StateIs, PlayState::Playing});
    EXPECT_EQ(did(), L"open l.m3u;close;open a;close;open b;");
    EXPECT_EQ(told(), L"new 0-2 ");
}

}  // namespace
}  // namespace tunovka
