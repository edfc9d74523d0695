#include "player/media_player.h"

#include <algorithm>
#include <utility>

namespace tunovka {

MediaPlayer::MediaPlayer(const MediaEngineFactory& createEngine, Post post)
    : post_(std::move(post)), self_(std::make_shared<MediaPlayer*>(this)) {
    engine_ = createEngine([this](const MediaNotification& what) { enqueue(what); });
    engine_->setVolume(volume_);
}

MediaPlayer::~MediaPlayer() {
    *self_ = nullptr;
}

void MediaPlayer::setFileName(const std::wstring& path) {
    ++opening_;
    fileName_ = path;
    if (path.empty())
        engine_->close();
    else
        engine_->open(path);
}

void MediaPlayer::release() {
    setFileName(L"");
}

void MediaPlayer::Play() {
    engine_->play();
}
void MediaPlayer::Pause() {
    engine_->pause();
}
void MediaPlayer::Stop() {
    engine_->stop();
}
void MediaPlayer::Previous() {
    engine_->previous();
}
void MediaPlayer::Next() {
    engine_->next();
}

double MediaPlayer::Duration() const {
    return engine_->duration();
}
double MediaPlayer::CurrentPosition() const {
    return engine_->position();
}
void MediaPlayer::setCurrentPosition(double seconds) {
    engine_->setPosition(seconds);
}

void MediaPlayer::setVolume(int hundredthsOfDecibel) {
    volume_ = std::clamp(hundredthsOfDecibel, kVolumeSilent, kVolumeFull);
    engine_->setVolume(volume_);
}

std::wstring MediaPlayer::ErrorDescription() const {
    return engine_->errorDescription();
}
std::wstring MediaPlayer::GetMediaInfoString(int kind) const {
    return engine_->mediaInfo(kind);
}

void MediaPlayer::enqueue(const MediaNotification& notification) {
    post_([self = self_, opening = opening_, notification] {
        if (*self && (*self)->opening_ == opening) (*self)->deliver(notification);
    });
}

// The handler is copied before it runs: it may destroy the player and itself with it.
void MediaPlayer::deliver(const MediaNotification& notification) {
    const auto call = [](auto handler, auto... arguments) {
        if (handler) handler(arguments...);
    };
    switch (notification.kind) {
        case MediaNotification::Kind::EndOfStream:
            call(EndOfStream, notification.first);
            break;
        case MediaNotification::Kind::NewStream:
            call(NewStream);
            break;
        case MediaNotification::Kind::PlayStateChange:
            call(PlayStateChange, notification.first, notification.second);
            break;
        case MediaNotification::Kind::Error:
            call(Error);
            break;
    }
}

}  // namespace tunovka
