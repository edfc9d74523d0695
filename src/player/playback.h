#pragma once

#include <atomic>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "player/media_engine.h"

namespace tunovka {

struct RuntimeError;

// Result of EndOfStream: the clip was played to its end.
inline constexpr int kPlayedToEnd = 0;

// What the player has to tell. Whatever the engine, the same is told in the same order:
//   opening a file      NewStream, PlayStateChange(stopped, playing)
//   next list entry     NewStream (the state is unchanged)
//   pause, stop, play   PlayStateChange(old, new)
//   end                 PlayStateChange(playing, stopped), EndOfStream
//   failure             PlayStateChange(old, stopped) if it was not stopped, Error
// Opening another file, or none, forgets the former file's state without a notification.
struct MediaNotification {
    enum class Kind { EndOfStream, NewStream, PlayStateChange, Error };
    Kind kind{};
    int first = 0;   // EndOfStream: the result; PlayStateChange: the old state
    int second = 0;  // PlayStateChange: the new state

    bool operator==(const MediaNotification&) const = default;
};

// What the thread of the windows and that of the player both see.
struct PlaybackSwitches {
    std::atomic<PlayState> wanted = PlayState::Stopped;
    std::atomic<int> busy = 0;       // how much is to be done that may take long: opening, closing
    std::atomic<bool> left = false;  // nobody waits for what comes of it any more
};

// Which file of a list sounds, and what is told of it: the player without its thread.
class Playback {
  public:
    enum class Step { First, Again, Next, Previous };

    struct Outside {
        // The entries of a playlist, or a single file as a list of one. May raise a RuntimeError,
        // which the other function puts into words.
        std::function<std::vector<ListedFile>(const std::wstring& file)> filesOf;
        std::function<PlaybackTrouble(const RuntimeError&)> troubleOf;
        std::function<void(const MediaNotification&)> tell;
        // Playing is over by itself: nothing is wanted any more, unless an order waits that does.
        std::function<void()> stopWanting;
    };

    Playback(MediaEngine& engine, PlaybackSwitches& switches, Outside outside);

    // Opens a sound file or a playlist and brings it to the wanted state; what was open is closed.
    void open(const std::wstring& file);

    // Brings what is open to the wanted state. Stopped closes the file; playing opens it again.
    void applyWanted();

    // Playlists only; playing, paused or stopped stays as it is. When no entry that way opens, the
    // one that is there goes on.
    void step(Step step);

    void seek(double seconds);

    // Takes up what the engine has observed.
    void takeEvents();

    double position() const { return engine_.isOpen() ? engine_.position() : 0; }
    double duration() const { return duration_; }  // stays known while stopped
    const ClipDetails& details() const { return details_; }
    const std::wstring& error() const { return error_; }
    bool sounds() const { return told_ == PlayState::Playing; }

  private:
    void handle(const EngineEvent& event);
    void reopen();
    void openFirst();
    void openEntry(Step step);
    std::optional<PlaybackTrouble> openFirstThat(Step step);
    void entryOpened();
    void noEntryOpened(Step step, const PlaybackTrouble& trouble);
    void clipFailed(const PlaybackTrouble& trouble);
    void clipEnded();
    void ended();
    void fail(const PlaybackTrouble& trouble);
    void close();
    bool canStep(Step step) const;

    void tellDetails();
    void tellState(PlayState state);

    MediaEngine& engine_;
    PlaybackSwitches& switches_;
    Outside outside_;

    std::wstring file_;
    bool whole_ = false;                  // the engine was given a playlist and steps itself
    std::vector<ListedFile> files_;       // else what is stepped through
    std::optional<std::size_t> current_;  // which of them is or was open
    Step lastStep_ = Step::First;         // what led to it
    bool opened_ = false;                 // the engine said so of what it was given last
    bool clipEnded_ = false;

    double duration_ = 0;
    ClipDetails details_;
    std::wstring error_;

    PlayState told_ = PlayState::Stopped;
    bool announced_ = false;  // the clip's details were told
    bool started_ = false;    // played since the opening or the last end
    bool failed_ = false;
};

}  // namespace tunovka
