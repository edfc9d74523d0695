// The player without its thread, over an engine that does what the test says.
#include "player/playback.h"

#include <gtest/gtest.h>

#include <deque>
#include <set>

#include "core/errors.h"

namespace tunovka {
namespace {

using Kind = EngineEvent::Kind;

struct FakeEngine : MediaEngine {
    bool takesLists() const override { return takes; }
    std::optional<PlaybackTrouble> open(const std::wstring& file) override {
        did += L"open " + file + L";";
        if (bad.contains(file)) return PlaybackTrouble{L"zlý", file == L"nič nehrá"};
        events.clear();
        open_ = file;
        if (late) return std::nullopt;
        events.push_back({Kind::Opened});
        return std::nullopt;
    }
    bool isOpen() const override { return !open_.empty(); }
    void close() override {
        if (isOpen()) did += L"close;";
        open_.clear();
        events.clear();
    }
    void hold() override { did += L"hold;"; }
    void play() override {
        if (!late) events.push_back({Kind::StateIs, PlayState::Playing});
    }
    void pause() override { events.push_back({Kind::StateIs, PlayState::Paused}); }
    void next() override { did += L"next;"; }
    double duration() const override { return 10; }
    double position() const override { return 1; }
    void seek(double) override {}
    void setVolume(int) override {}
    ClipDetails details() const override { return {}; }
    std::optional<EngineEvent> takeEvent() override {
        if (events.empty()) return std::nullopt;
        const EngineEvent first = events.front();
        events.pop_front();
        return first;
    }

    bool takes = false, late = false;
    std::set<std::wstring> bad;
    std::wstring open_, did;
    std::deque<EngineEvent> events;
};

class PlaybackTest : public testing::Test {
  protected:
    void open(const std::wstring& file, PlayState wanted = PlayState::Playing) {
        switches.wanted = wanted;
        playback.open(file);
        playback.takeEvents();
    }
    void want(PlayState state) {
        switches.wanted = state;
        playback.applyWanted();
        playback.takeEvents();
    }
    void step(Playback::Step step) {
        playback.step(step);
        playback.takeEvents();
    }
    void happens(const EngineEvent& event) {
        engine.events.push_back(event);
        playback.takeEvents();
    }
    // What was told and what the engine did since the last asking: "new" details, "0-2" a change of
    // the state, "end", "error".
    std::wstring told() { return std::exchange(told_, {}); }
    std::wstring did() { return std::exchange(engine.did, {}); }

    FakeEngine engine;
    PlaybackSwitches switches;
    std::vector<ListedFile> list = {{L"a", {L"A", L""}}, {L"b", {}}, {L"c", {}}};
    std::wstring told_;
    Playback playback{
        engine,
        switches,
        {.filesOf =
             [this](const std::wstring& file) {
                 if (file == L"niet.m3u") throw RuntimeError(kFileNotFound);
                 return file.ends_with(L".m3u") ? list : std::vector<ListedFile>{{file, {}}};
             },
         .troubleOf = [](const RuntimeError&) { return PlaybackTrouble{L"niet"}; },
         .tell =
             [this](const MediaNotification& what) {
                 const std::wstring change =
                     std::to_wstring(what.first) + L"-" + std::to_wstring(what.second);
                 const std::wstring names[] = {L"end", L"new", change, L"error"};
                 told_ += names[static_cast<int>(what.kind)] + L" ";
             },
         .stopWanting = [this] { switches.wanted = PlayState::Stopped; }}};
};

TEST_F(PlaybackTest, tellsOpeningPauseStopAndEndInOneOrder) {
    open(L"x.mp3");
    EXPECT_EQ(told(), L"new 0-2 ");
    want(PlayState::Paused);
    want(PlayState::Playing);
    EXPECT_EQ(told(), L"2-1 1-2 ");
    want(PlayState::Stopped);
    EXPECT_EQ(did(), L"open x.mp3;close;") << "what is stopped is not held";
    EXPECT_EQ(playback.duration(), 10);
    EXPECT_EQ(playback.position(), 0);
    want(PlayState::Playing);
    happens({Kind::Ended});
    EXPECT_EQ(told(), L"2-0 new 0-2 2-0 end ");
    EXPECT_EQ(did(), L"open x.mp3;close;");
    EXPECT_EQ(switches.wanted, PlayState::Stopped);
    want(PlayState::Playing);
    EXPECT_EQ(told(), L"new 0-2 ");
}

TEST_F(PlaybackTest, whatIsWantedWhileAFileOpensIsDoneWhenItIsThere) {
    engine.late = true;
    open(L"x.mp3", PlayState::Paused);
    happens({Kind::Opened});
    happens({Kind::StateIs, PlayState::Playing});  // it starts by itself
    EXPECT_EQ(told(), L"new 0-1 ");
    open(L"y.mp3", PlayState::Stopped);
    happens({Kind::Opened});
    EXPECT_FALSE(engine.isOpen());
}

TEST_F(PlaybackTest, aFailureIsToldOnceAndPlayingTriesAgain) {
    engine.bad = {L"x.mp3"};
    open(L"x.mp3");
    EXPECT_EQ(told(), L"error ");
    EXPECT_EQ(playback.error(), L"zlý");
    EXPECT_EQ(switches.wanted, PlayState::Stopped);
    engine.bad = {};
    want(PlayState::Playing);
    EXPECT_EQ(told(), L"new 0-2 ");
    EXPECT_EQ(playback.error(), L"");
    happens({.kind = Kind::Failed, .trouble = {L"prasklo"}});
    happens({.kind = Kind::Failed, .trouble = {L"znova"}});
    EXPECT_EQ(told(), L"2-0 error ");
    EXPECT_EQ(playback.error(), L"prasklo");
    open(L"niet.m3u");
    EXPECT_EQ(playback.error(), L"niet");
}

TEST_F(PlaybackTest, aListIsSteppedThroughAndWhatIsBadIsPassedOver) {
    engine.bad = {L"b"};
    open(L"l.m3u");
    EXPECT_EQ(playback.details().title, L"A") << "as the list tells";
    step(Playback::Step::Next);
    EXPECT_EQ(did(), L"open a;hold;open b;open c;");
    step(Playback::Step::Next);
    step(Playback::Step::Previous);
    EXPECT_EQ(told(), L"new 0-2 new new ");
    want(PlayState::Stopped);
    did();
    step(Playback::Step::Next);
    EXPECT_EQ(did(), L"open b;open c;close;") << "shown, and not held";
    EXPECT_EQ(told(), L"2-0 new ");
    want(PlayState::Playing);
    EXPECT_EQ(did(), L"open c;");
    happens({Kind::Ended});
    EXPECT_EQ(told(), L"new 0-2 2-0 end ");
    want(PlayState::Playing);
    EXPECT_EQ(did(), L"close;open a;") << "from the start";
    engine.bad = {L"b", L"c"};
    step(Playback::Step::Next);
    EXPECT_EQ(told(), L"new 0-2 ") << "nothing that way: it goes on";
    happens({Kind::Ended});
    EXPECT_EQ(told(), L"2-0 end ");
}

TEST_F(PlaybackTest, aListWithoutAGoodEntryIsToldOnce) {
    engine.bad = {L"a", L"b", L"c"};
    open(L"l.m3u");
    EXPECT_EQ(told(), L"error ");
    EXPECT_NE(playback.error().find(L"neodkazuje"), std::wstring::npos);
    list = {{L"nič nehrá", {}}, {L"c", {}}};
    engine.bad.insert(L"nič nehrá");
    did();
    open(L"l.m3u");
    EXPECT_EQ(did(), L"open nič nehrá;") << "no device: the others would not play either";
    EXPECT_EQ(playback.error(), L"zlý");
}

TEST_F(PlaybackTest, aListThatIsTakenWholeIsSteppedByTheEngine) {
    engine.takes = true;
    open(L"l.m3u");
    step(Playback::Step::Next);
    EXPECT_EQ(did(), L"open l.m3u;next;");
    happens({Kind::Opened});
    happens({Kind::Ended});
    EXPECT_EQ(told(), L"new 0-2 new 2-0 end ");
    want(PlayState::Playing);
    EXPECT_EQ(did(), L"close;open l.m3u;");
}

TEST_F(PlaybackTest, aListThatIsRefusedIsReadBeforeAnythingIsTold) {
    engine.takes = true;
    engine.bad = {L"l.m3u", L"a"};
    open(L"l.m3u");
    EXPECT_EQ(did(), L"open l.m3u;open a;open b;");
    EXPECT_EQ(told(), L"new 0-2 ");
    happens({Kind::Ended});
    EXPECT_EQ(told(), L"new ") << "the end of an entry is not the end";
    EXPECT_EQ(switches.wanted, PlayState::Playing);

    engine.bad = {};
    engine.late = true;
    open(L"m.m3u");  // refused later
    did();
    happens({.kind = Kind::Failed, .trouble = {L"zoznam nie"}});
    EXPECT_EQ(did(), L"close;open a;");
    happens({.kind = Kind::Failed, .trouble = {L"a nie"}});
    EXPECT_EQ(did(), L"open b;");
    happens({Kind::Opened});
    happens({Kind::StateIs, PlayState::Playing});
    EXPECT_EQ(told(), L"new 0-2 ");
}

TEST_F(PlaybackTest, whatIsGivenUpTriesNoFurtherEntry) {
    switches.left = true;
    open(L"l.m3u");
    EXPECT_EQ(did(), L"");
    EXPECT_EQ(told(), L"");
}

}  // namespace
}  // namespace tunovka
