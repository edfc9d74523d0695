#pragma once

#include <memory>
#include <string>
#include <vector>

#include "player/com_apartment.h"
#include "player/control_site.h"
#include "player/event_sink.h"
#include "player/late_bound.h"
#include "player/media_engine.h"
#include "player/playback_reporter.h"

namespace tunovka {

// Plays through the media control "MediaPlayer.MediaPlayer.1", where the system has it. The
// control opens playlists and steps through them itself.
class MediaControlEngine final : public MediaEngine {
  public:
    // Null where the control is not registered or cannot be created, or is not what it should be.
    static std::unique_ptr<MediaEngine> create(MediaListener listener);

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
    explicit MediaControlEngine(MediaListener listener);
    bool attach();
    void forget();
    void handleEvent(const std::wstring& name, const std::vector<long>& arguments);
    void playStateIs(long state);
    void fail(std::wstring description);

    ComApartment apartment_;
    PlaybackReporter reporter_;
    HiddenControl host_;
    LateBound control_;
    EventConnection events_;

    std::wstring file_;
    std::wstring error_;
    bool opening_ = false;  // from setting the file until it plays or fails
    bool failed_ = false;   // what is set cannot be played
    bool stopped_ = false;  // the owner wants silence, also if the file is still opening
};

}  // namespace tunovka
