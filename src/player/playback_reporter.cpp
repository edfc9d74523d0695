#include "player/playback_reporter.h"

#include <utility>

namespace tunovka {

using Kind = MediaNotification::Kind;

PlaybackReporter::PlaybackReporter(MediaListener listener) : listener_(std::move(listener)) {}

void PlaybackReporter::reset() {
    state_ = PlayState::Stopped;
    announced_ = started_ = failed_ = false;
}

void PlaybackReporter::clipOpened() {
    if (announced_ && !started_) return;
    announced_ = true;
    tell(Kind::NewStream);
}

void PlaybackReporter::stateIs(PlayState state) {
    if (state == state_) return;
    if (state != PlayState::Stopped && !announced_) clipOpened();
    const PlayState old = std::exchange(state_, state);
    if (state == PlayState::Playing) started_ = true;
    tell(Kind::PlayStateChange, static_cast<int>(old), static_cast<int>(state));
}

void PlaybackReporter::ended(int result) {
    if (!std::exchange(started_, false)) return;
    stateIs(PlayState::Stopped);
    tell(Kind::EndOfStream, result);
}

void PlaybackReporter::failed() {
    if (std::exchange(failed_, true)) return;
    stateIs(PlayState::Stopped);
    started_ = false;
    tell(Kind::Error);
}

void PlaybackReporter::tell(Kind kind, int first, int second) {
    if (listener_) listener_({kind, first, second});
}

}  // namespace tunovka
