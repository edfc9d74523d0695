#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "playlist/listed_files.h"

namespace tunovka {

// The states of playing, numbered as the owner's state-change handling counts them.
enum class PlayState : int { Stopped = 0, Paused = 1, Playing = 2 };

inline constexpr int kVolumeSilent = -10000;  // hundredths of a decibel
inline constexpr int kVolumeFull = 0;
inline constexpr int kVolumeDefault = -600;

// Why something cannot be played.
struct PlaybackTrouble {
    std::wstring text;           // for the person; never empty
    bool withEveryFile = false;  // no other file would play either
};

// What an engine observes.
struct EngineEvent {
    enum class Kind { Opened, StateIs, Ended, Failed } kind{};
    PlayState state = PlayState::Stopped;  // StateIs
    PlaybackTrouble trouble{};             // Failed
};

// What sounds: one file at a time. Made, used and destroyed by the player's own thread, where a
// call may take as long as it must. Throws nothing.
class MediaEngine {
  public:
    virtual ~MediaEngine() = default;

    // Whether open() takes a playlist whole and then steps through its entries itself.
    virtual bool takesLists() const { return false; }

    // Opens a file in place of the one that is open. On failure the former one may still be open.
    // Opened follows as an event; what is wrong may be found out later and then follows as Failed.
    virtual std::optional<PlaybackTrouble> open(const std::wstring& file) = 0;
    virtual bool isOpen() const = 0;

    // Lets go of the file, which may be renamed or deleted when this returns.
    virtual void close() = 0;

    // Silent for a moment, until another file is open or play() or pause() goes on; no event.
    virtual void hold() {}

    virtual void play() = 0;
    virtual void pause() = 0;
    virtual void previous() {}  // within a playlist that was taken whole
    virtual void next() {}

    virtual double duration() const = 0;  // seconds, 0 when nothing is open or it is not known
    virtual double position() const = 0;  // seconds
    virtual void seek(double seconds) = 0;
    virtual void setVolume(int hundredthsOfDecibel) = 0;  // kVolumeSilent … kVolumeFull
    virtual ClipDetails details() const = 0;              // of the open file

    // The next thing that happened, nullopt when nothing did. The system's event (null: none) is
    // set when there may be one; so may be any message that the thread's loop has dispatched.
    virtual std::optional<EngineEvent> takeEvent() = 0;
    virtual void* eventHandle() const { return nullptr; }
};

using MediaEngineFactory = std::function<std::unique_ptr<MediaEngine>()>;

// The choice of the engine: the media control where it is registered and can be created, else the
// system's filter graph.
std::unique_ptr<MediaEngine> createMediaEngine();

}  // namespace tunovka
