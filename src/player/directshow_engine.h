#pragma once

#include <deque>
#include <string>

#include "core/loop.h"
#include "player/clip_opener.h"
#include "player/com_apartment.h"
#include "player/media_engine.h"
#include "player/playback_reporter.h"
#include "player/sound_graph.h"

namespace tunovka {

// Plays through the system's filter graphs, one clip after another. A clip is opened on another
// thread; what is asked meanwhile is done when it is there.
class DirectShowEngine final : public MediaEngine {
  public:
    explicit DirectShowEngine(MediaListener listener);

    void open(const std::wstring& file) override;
    void close() override;
    void play() override;
    void pause() override;
    void stop() override;
    void previous() override;
    void next() override;
    double duration() const override;
    double position() const override;
    void setPosition(double seconds) override;
    void setVolume(int hundredthsOfDecibel) override;
    std::wstring mediaInfo(int kind) const override;
    std::wstring errorDescription() const override { return error_; }

  private:
    using Step = PlaylistStepper::Step;

    void takeOpening(std::uintptr_t number);
    void forget();
    void openEntry(Step step);
    void step(Step step);
    void entryOpened(Opening& opening);
    void entryNotOpened(const Opening& opening);
    void takeGraphEvents();
    void clipEnded();
    void listEnded();
    void applyWanted();
    void fail(const std::wstring& error);

    ComApartment apartment_;
    PlaybackReporter reporter_;
    LoopSignal opened_, graphEvent_;
    ClipOpener opener_;
    SoundGraph graph_;  // the clip that plays

    std::wstring file_;
    ClipList list_;
    ClipDetails details_;
    std::wstring error_;
    PlayState wanted_ = PlayState::Stopped;  // what a clip does when it is opened
    std::deque<Step> waiting_;               // steps that were asked while a clip was opening
    bool clipEnded_ = false;                 // the clip in graph_ is at its end
    bool listEnded_ = false;                 // so is the list: playing starts it again
    int volume_ = kVolumeDefault;
};

}  // namespace tunovka
