#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "core/errors.h"
#include "core/non_copyable.h"
#include "playlist/listed_files.h"

namespace tunovka {

// The states of playing, numbered as the media control counts them.
enum class PlayState : int { Stopped = 0, Paused = 1, Playing = 2 };

// Hundredths of a decibel.
inline constexpr int kVolumeSilent = -10000, kVolumeFull = 0, kVolumeDefault = -600;

// Why something cannot be played.
struct PlaybackTrouble {
    std::wstring text;           // for the person; never empty
    bool withEveryFile = false;  // no other file would play either
};

// What the person reads of a failure: it stands between other sentences, and so between blanks.
inline PlaybackTrouble playbackTrouble(const RuntimeError& error) {
    return {L" " + error.description + L" "};
}
// The same for an error of the system (HRESULT), with its number where it is not a common one.
PlaybackTrouble playbackTrouble(long error);

// What an engine observes.
struct EngineEvent {
    enum class Kind { Opened, StateIs, Ended, Failed } kind{};
    PlayState state = PlayState::Stopped;  // StateIs
    PlaybackTrouble trouble{};             // Failed
};

// Plays one file at a time, all on one thread, where a call may take its time. Throws nothing.
class MediaEngine : NonCopyable {
  public:
    virtual ~MediaEngine() = default;

    // Whether open() takes a playlist whole and then steps through its entries itself.
    virtual bool takesLists() const { return false; }

    // Opens a file while none is open. Opened follows as an event; what is wrong may be found out
    // later and then follows as Failed. After either failure the file is to be closed.
    virtual std::optional<PlaybackTrouble> open(const std::wstring& file) = 0;

    // The file may be renamed or deleted when this returns. Its events are forgotten.
    virtual void close() = 0;

    // The others are for a file that is open.
    virtual void play() = 0;
    virtual void pause() = 0;
    virtual void step(int /*way*/) {}  // of a list taken whole: 1 next, -1 previous
    virtual void seek(double seconds) = 0;
    virtual double duration() const = 0;  // seconds, 0 when it is not known
    virtual double position() const = 0;  // seconds
    virtual ClipDetails details() const = 0;

    virtual void setVolume(int hundredthsOfDecibel) = 0;  // of all files, kVolumeSilent … Full

    // The next thing that happened, nullopt when nothing did.
    std::optional<EngineEvent> takeEvent() {
        if (observed_.empty()) look();
        if (observed_.empty()) return std::nullopt;
        EngineEvent event = std::move(observed_.front());
        observed_.pop_front();
        return event;
    }

    // The system's event (nullptr: none) that is set when something may have happened; so may
    // anything upon a message that the thread's loop has dispatched.
    virtual void* eventHandle() const { return nullptr; }

  protected:
    virtual void look() {}  // observes what does not tell of itself
    void observe(EngineEvent event) { observed_.push_back(std::move(event)); }
    void observeFailure(PlaybackTrouble trouble) {
        observe({.kind = EngineEvent::Kind::Failed, .trouble = std::move(trouble)});
    }

    std::deque<EngineEvent> observed_;
};

using MediaEngineFactory = std::function<std::unique_ptr<MediaEngine>()>;

// The media control, nullptr where the system has none that works.
std::unique_ptr<MediaEngine> createMediaControl();
// The system's filter graph.
std::unique_ptr<MediaEngine> createFilterGraph();
// The first of them that there is.
std::unique_ptr<MediaEngine> createMediaEngine();

}  // namespace tunovka
