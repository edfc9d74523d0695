#include <gtest/gtest.h>

#include <deque>

#include "player/playback_reporter.h"
#include "support/notifications.h"

namespace tunovka {
namespace {

class Reporter : public testing::Test {
  protected:
    Notifications told() { return std::exchange(told_, {}); }

    Notifications told_;
    PlaybackReporter reporter_{[this](const MediaNotification& what) { told_.push_back(what); }};
};

TEST_F(Reporter, tellsOpeningPauseAndEndInOneOrder) {
    reporter_.clipOpened();
    reporter_.stateIs(PlayState::Playing);
    EXPECT_EQ(told(), (Notifications{kNewStream, change(0, 2)}));
    reporter_.stateIs(PlayState::Paused);
    reporter_.stateIs(PlayState::Paused);
    reporter_.stateIs(PlayState::Playing);
    EXPECT_EQ(told(), (Notifications{change(2, 1), change(1, 2)}));
    reporter_.ended(kPlayedToEnd);
    reporter_.stateIs(PlayState::Stopped);
    reporter_.ended(kPlayedToEnd);
    EXPECT_EQ(told(), (Notifications{change(2, 0), kEnd}));
    reporter_.stateIs(PlayState::Playing);
    reporter_.ended(kPlayedToEnd);
    EXPECT_EQ(told(), (Notifications{change(0, 2), change(2, 0), kEnd})) << "played again";
}

TEST_F(Reporter, anotherOrderOfObservationsGivesTheSameNotifications) {
    reporter_.stateIs(PlayState::Playing);  // before the details, which come doubled
    EXPECT_EQ(told(), (Notifications{kNewStream, change(0, 2)}));
    reporter_.stateIs(PlayState::Stopped);  // before the end, or after it
    reporter_.ended(kPlayedToEnd);
    EXPECT_EQ(told(), (Notifications{change(2, 0), kEnd}));
    reporter_.reset();
    reporter_.clipOpened();
    reporter_.clipOpened();
    EXPECT_EQ(told(), Notifications{kNewStream});
}

TEST_F(Reporter, eachEntryOfAListIsAnnounced) {
    reporter_.clipOpened();
    reporter_.stateIs(PlayState::Playing);
    reporter_.clipLeft();
    reporter_.clipOpened();
    reporter_.clipLeft();
    reporter_.clipOpened();
    EXPECT_EQ(told(), (Notifications{kNewStream, change(0, 2), kNewStream, kNewStream}));
}

TEST_F(Reporter, whatIsLateOfAReplacedFileIsDropped) {
    reporter_.stateIs(PlayState::Playing);
    reporter_.reset();
    told();
    reporter_.stateIs(PlayState::Stopped);
    reporter_.ended(kPlayedToEnd);
    EXPECT_EQ(told(), Notifications{});
}

TEST_F(Reporter, aFailureIsToldOnceForEachOpening) {
    reporter_.failed();
    reporter_.failed();
    EXPECT_EQ(told(), Notifications{kError});
    reporter_.reset();
    reporter_.stateIs(PlayState::Playing);
    told();
    reporter_.failed();
    reporter_.ended(kPlayedToEnd);
    EXPECT_EQ(told(), (Notifications{change(2, 0), kError}));
}

// An engine that does what the test says and writes down what it is asked.
struct FakeEngine : MediaEngine {
    explicit FakeEngine(MediaListener listener) : tell(std::move(listener)) {}
    void open(const std::wstring& file) override {
        opened.push_back(file);
        tell(kNewStream);  // from inside the call
    }
    void close() override { opened.push_back(L"(nothing)"); }
    void play() override {}
    void pause() override {}
    void stop() override {}
    void previous() override {}
    void next() override {}
    double duration() const override { return 0; }
    double position() const override { return 0; }
    void setPosition(double) override {}
    void setVolume(int value) override { volume = value; }
    std::wstring mediaInfo(int) const override { return {}; }
    std::wstring errorDescription() const override { return {}; }

    MediaListener tell;
    std::vector<std::wstring> opened;
    int volume = 1;
};

class Player : public testing::Test {
  protected:
    Player() {
        const auto engine = [this](MediaListener listener) {
            auto made = std::make_unique<FakeEngine>(std::move(listener));
            engine_ = made.get();
            return made;
        };
        const auto post = [this](std::function<void()> routine) {
            loop_.push_back(std::move(routine));
        };
        player_ = std::make_unique<MediaPlayer>(engine, post);
        listen(*player_, told_);
    }

    Notifications runLoop() {
        while (!loop_.empty()) {
            const auto routine = std::move(loop_.front());
            loop_.pop_front();
            routine();
        }
        return std::exchange(told_, {});
    }

    std::deque<std::function<void()>> loop_;
    Notifications told_;
    FakeEngine* engine_ = nullptr;
    std::unique_ptr<MediaPlayer> player_;
};

TEST_F(Player, notificationsComeFromTheLoopInTheirOrder) {
    player_->setFileName(L"a.mp3");
    EXPECT_EQ(told_, Notifications{}) << "never from inside a call of the owner";
    engine_->tell(change(0, 2));
    engine_->tell(kEnd);
    EXPECT_EQ(runLoop(), (Notifications{kNewStream, change(0, 2), kEnd}));
    EXPECT_EQ(player_->FileName(), L"a.mp3");
}

TEST_F(Player, whatBelongsToAReplacedOrReleasedFileIsDropped) {
    player_->setFileName(L"a.mp3");
    engine_->tell(kError);
    player_->setFileName(L"b.mp3");
    EXPECT_EQ(runLoop(), Notifications{kNewStream}) << "that of b.mp3 alone";
    engine_->tell(kEnd);
    player_->release();
    EXPECT_EQ(runLoop(), Notifications{});
    EXPECT_EQ(player_->FileName(), L"");
    EXPECT_EQ(engine_->opened, (std::vector<std::wstring>{L"a.mp3", L"b.mp3", L"(nothing)"}));
}

TEST_F(Player, aHandlerMayOpenAnotherFileOrDestroyThePlayer) {
    player_->setFileName(L"a.mp3");
    engine_->tell(kEnd);
    engine_->tell(kError);
    player_->EndOfStream = [this](int) { player_->setFileName(L"b.mp3"); };
    EXPECT_EQ(runLoop(), (Notifications{kNewStream, kNewStream})) << "the error was of a.mp3";
    engine_->tell(kEnd);
    engine_->tell(kError);
    player_->EndOfStream = [this](int) { player_.reset(); };
    EXPECT_EQ(runLoop(), Notifications{}) << "nothing after destruction";
}

TEST_F(Player, volumeStartsAtTheDefaultAndStaysInItsRange) {
    EXPECT_EQ(player_->Volume(), -600);
    player_->setFileName(L"a.mp3");
    EXPECT_EQ(engine_->volume, -600);
    player_->setVolume(5);
    EXPECT_EQ(engine_->volume, 0);
    player_->setVolume(-20000);
    EXPECT_EQ(player_->Volume(), -10000);
}

}  // namespace
}  // namespace tunovka
