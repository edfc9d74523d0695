#include "player/playback.h"

#include <tuple>

#include "core/multimedialny.h"
#include "core/text.h"

namespace tunovka {
namespace {

using Kind = MediaNotification::Kind;

const PlaybackTrouble kNothingToPlay{
    L" Playlist neodkazuje na žiaden súbor, ktorý sa dá prehrať. "};

}  // namespace

Playback::Playback(MediaEngine& engine, std::wstring file, ReadEntries readEntries, Tell tell)
    : engine_(engine),
      readEntries_(std::move(readEntries)),
      tell_(std::move(tell)),
      file_(std::move(file)),
      isList_(MultiMedialny::isPlaylistName(lowerCased(file_))),
      whole_(isList_ && engine.takesLists()) {}

void Playback::want(PlayState state) {
    if (state != PlayState::Paused || wanted_ == PlayState::Playing) wanted_ = state;
}

void Playback::step(int way) {
    if (whole_) {
        if (opened_) engine_.step(way);
        return;
    }
    if (!haveEntries()) return;
    const std::pair from{at_, position()};
    if (!moveTo(way)) return;
    if (opened_) back_ = from;
    closeClip();
}

void Playback::seek(double seconds) {
    if (opened_) engine_.seek(seconds);
}

bool Playback::proceed() {
    while (const std::optional<EngineEvent> event = engine_.takeEvent())
        if (given_) handle(*event);  // else it is late, of the file before
    if (opened_) duration_ = engine_.duration();
    if (wanted_ == PlayState::Stopped) {
        closeClip();
        tellState(PlayState::Stopped);
        return false;
    }
    if (given_ && (!opened_ || asked_ == wanted_)) return false;
    if (!given_) {
        openClip();
    } else {
        asked_ = wanted_;
        if (wanted_ == PlayState::Playing)
            engine_.play();
        else
            engine_.pause();
    }
    return true;
}

void Playback::openClip() {
    error_.clear();
    if (!whole_ && !haveEntries()) return;
    given_ = true;
    asked_ = PlayState::Stopped;
    if (const auto trouble = engine_.open(whole_ ? file_ : entries_[at_].path))
        clipFailed(*trouble);
}

// False when there are none, which is told.
bool Playback::haveEntries() {
    if (!entries_.empty()) return true;
    try {
        entries_ = readEntries_();
        if (entries_.empty()) fail(kNothingToPlay);
    } catch (const RuntimeError& error) {
        fail(playbackTrouble(error));
    }
    return !entries_.empty();
}

// False when there is no entry that way.
bool Playback::moveTo(int way) {
    if (way > 0 ? at_ + 1 >= entries_.size() : at_ == 0) return false;
    at_ += static_cast<std::size_t>(way);
    way_ = way;
    return true;
}

void Playback::closeClip() {
    if (given_) engine_.close();
    given_ = opened_ = false;
}

void Playback::handle(const EngineEvent& event) {
    switch (event.kind) {
        case EngineEvent::Kind::Opened:
            clipOpened();
            break;
        case EngineEvent::Kind::StateIs:
            if (event.state == PlayState::Playing && wanted_ != PlayState::Playing)
                asked_ = event.state;  // it started by itself when it was open
            else
                tellState(event.state);
            break;
        case EngineEvent::Kind::Ended:
            if (!opened_) break;
            if (!whole_ && moveTo(1))
                closeClip();
            else
                listEnded();
            break;
        case EngineEvent::Kind::Failed:
            clipFailed(event.trouble);
            break;
    }
}

void Playback::clipOpened() {
    opened_ = true;
    way_ = 1;
    back_.reset();
    details_ = engine_.details();
    if (!whole_) details_ = details_.orElse(entries_[at_].listed);
    duration_ = engine_.duration();
    if (resumeAt_ > 0) engine_.seek(std::exchange(resumeAt_, 0));
    if (wanted_ != PlayState::Stopped) tell_({Kind::NewStream});
}

void Playback::clipFailed(const PlaybackTrouble& trouble) {
    const bool refused = whole_ && !opened_;
    closeClip();
    resumeAt_ = 0;
    if (refused) {
        whole_ = false;
    } else if (whole_ || !isList_ || trouble.withEveryFile) {
        fail(trouble);
    } else if (moveTo(way_)) {
        // It is tried next.
    } else if (back_) {
        std::tie(at_, resumeAt_) = *back_;
        back_.reset();
        way_ = 1;
    } else if (told_ == PlayState::Stopped) {
        fail(kNothingToPlay);
    } else {
        listEnded();
    }
}

// Playing starts it again.
void Playback::listEnded() {
    wanted_ = PlayState::Stopped;
    closeClip();
    at_ = 0;
    tellState(PlayState::Stopped);
    tell_({Kind::EndOfStream});
}

// Playing reads the list again.
void Playback::fail(const PlaybackTrouble& trouble) {
    wanted_ = PlayState::Stopped;
    closeClip();
    entries_.clear();
    at_ = 0;
    error_ = trouble.text;
    tellState(PlayState::Stopped);
    tell_({Kind::Error});
}

void Playback::tellState(PlayState state) {
    if (state == told_) return;
    const PlayState from = std::exchange(told_, state);
    tell_({Kind::PlayStateChange, from, state});
}

}  // namespace tunovka
