#pragma once

#include <functional>
#include <memory>
#include <string>

namespace tunovka {

// The states of playing, numbered as the owner's state-change handling counts them.
enum class PlayState : int { Stopped = 0, Paused = 1, Playing = 2 };

// Kinds of clip details for mediaInfo().
inline constexpr int kClipTitle = 8;
inline constexpr int kClipAuthor = 9;

// Result of EndOfStream: the clip was played to its end.
inline constexpr int kPlayedToEnd = 0;

inline constexpr int kVolumeSilent = -10000;  // hundredths of a decibel
inline constexpr int kVolumeFull = 0;
inline constexpr int kVolumeDefault = -600;

// What an engine has to tell. Every engine tells the same in the same order:
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

// Called on the user-interface thread, also from inside a call of the engine.
using MediaListener = std::function<void(const MediaNotification&)>;

// What plays. Calls come from the user-interface thread alone, never block for long, and throw
// nothing: whatever goes wrong is told by an Error notification and errorDescription().
class MediaEngine {
  public:
    virtual ~MediaEngine() = default;

    // Opens a sound file or a playlist and starts it; what was open before is closed.
    virtual void open(const std::wstring& file) = 0;

    // Lets go of the open file; it may be renamed or deleted when this returns.
    virtual void close() = 0;

    virtual void play() = 0;
    virtual void pause() = 0;
    virtual void stop() = 0;
    virtual void previous() = 0;  // playlists only; playing, paused or stopped stays as it is
    virtual void next() = 0;

    virtual double duration() const = 0;  // seconds, 0 when nothing is open or it is not known
    virtual double position() const = 0;  // seconds
    virtual void setPosition(double seconds) = 0;
    virtual void setVolume(int hundredthsOfDecibel) = 0;  // kVolumeSilent … kVolumeFull

    virtual std::wstring mediaInfo(int kind) const = 0;  // "" when not known
    virtual std::wstring errorDescription() const = 0;   // of the last error, "" without one
};

using MediaEngineFactory = std::function<std::unique_ptr<MediaEngine>(MediaListener)>;

// The choice of the engine: the media control where it is registered and can be created, else
// the system's filter graph.
std::unique_ptr<MediaEngine> createMediaEngine(MediaListener listener);

}  // namespace tunovka
