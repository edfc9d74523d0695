#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "player/media_engine.h"

namespace tunovka {

// What the player has to tell. Whatever the engine, the same is told in the same order:
//   opening a file      NewStream, PlayStateChange(stopped, playing)
//   next list entry     NewStream (the state is unchanged)
//   pause, stop, play   PlayStateChange(from, to)
//   end                 PlayStateChange(playing, stopped), EndOfStream
//   failure             PlayStateChange(from, stopped) if it was not stopped, Error
struct MediaNotification {
    enum class Kind { EndOfStream, NewStream, PlayStateChange, Error };
    Kind kind{};
    PlayState from{}, to{};  // PlayStateChange
};

// The playing of one file or playlist over an engine: which entry sounds, and what is told of it.
class Playback {
  public:
    // Gives the entries of a playlist, any other file as a list of one; raises a RuntimeError.
    using ReadEntries = std::function<std::vector<ListedFile>()>;
    using Tell = std::function<void(const MediaNotification&)>;

    // The file, not "", is to be opened and played.
    Playback(MediaEngine& engine, std::wstring file, ReadEntries readEntries, Tell tell);

    // Orders, followed by proceed(). Stopped closes the file; pausing counts while it is to play.
    void want(PlayState state);
    // To the next (1) or the previous (-1) entry that can be played; playing, paused or stopped
    // stays as it is. Without such an entry the one that is there goes on.
    void step(int way);
    void seek(double seconds);  // of the clip that is open
    void setVolume(int hundredthsOfDecibel) { engine_.setVolume(hundredthsOfDecibel); }

    // Handles the engine's events, then takes one step towards what is wanted, such as trying one
    // entry of a list. False when there is nothing left to do.
    bool proceed();

    double position() const { return opened_ ? engine_.position() : 0; }
    double duration() const { return duration_; }  // stays known while stopped
    const ClipDetails& details() const { return details_; }
    const std::wstring& error() const { return error_; }
    bool sounds() const { return told_ == PlayState::Playing; }

  private:
    void openClip();
    bool haveEntries();
    bool moveTo(int way);
    void closeClip();
    void handle(const EngineEvent& event);
    void clipOpened();
    void clipFailed(const PlaybackTrouble& trouble);
    void listEnded();
    void fail(const PlaybackTrouble& trouble);
    void tellState(PlayState state);

    MediaEngine& engine_;
    ReadEntries readEntries_;
    Tell tell_;

    std::wstring file_;
    bool isList_;
    bool whole_;                       // the engine is given the playlist and steps by itself
    std::vector<ListedFile> entries_;  // else what is stepped through; {} before it is read
    std::size_t at_ = 0;               // the entry that is open or the next to be opened
    int way_ = 1;                      // where to go on when it cannot be played

    // The entry and second where the last step began, until another entry is open.
    std::optional<std::pair<std::size_t, double>> back_;
    double resumeAt_ = 0;  // seconds; where the next clip goes on

    PlayState wanted_ = PlayState::Playing;
    PlayState asked_ = PlayState::Stopped;  // of the engine, for the clip
    PlayState told_ = PlayState::Stopped;
    bool given_ = false;   // the engine has a file
    bool opened_ = false;  // and says that it is open

    double duration_ = 0;
    ClipDetails details_;
    std::wstring error_;
};

}  // namespace tunovka
