#include "player/media_player.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace tunovka {

MediaPlayer::MediaPlayer(MediaEngineFactory createEngine, Post post)
    : createEngine_(std::move(createEngine)),
      post_(std::move(post)),
      self_(std::make_shared<MediaPlayer*>(this)) {}

MediaPlayer::~MediaPlayer() {
    *self_ = nullptr;
}

MediaEngine& MediaPlayer::engine() {
    if (!engine_) {
        engine_ = createEngine_([this](const MediaNotification& what) { enqueue(what); });
        engine_->setVolume(volume_);
    }
    return *engine_;
}

void MediaPlayer::setFileName(const std::wstring& path) {
    ++opening_;
    fileName_ = path;
    if (!path.empty())
        engine().open(path);
    else if (engine_)
        engine_->close();
}

void MediaPlayer::release() {
    setFileName(L"");
}

void MediaPlayer::Play() {
    if (engine_) engine_->play();
}
void MediaPlayer::Pause() {
    if (engine_) engine_->pause();
}
void MediaPlayer::Stop() {
    if (engine_) engine_->stop();
}
void MediaPlayer::Previous() {
    if (engine_) engine_->previous();
}
void MediaPlayer::Next() {
    if (engine_) engine_->next();
}

double MediaPlayer::Duration() const {
    return engine_ ? engine_->duration() : 0;
}
double MediaPlayer::CurrentPosition() const {
    return engine_ ? engine_->position() : 0;
}
void MediaPlayer::setCurrentPosition(double seconds) {
    if (engine_) engine_->setPosition(seconds);
}

void MediaPlayer::setVolume(int hundredthsOfDecibel) {
    volume_ = std::clamp(hundredthsOfDecibel, kVolumeSilent, kVolumeFull);
    if (engine_) engine_->setVolume(volume_);
}

std::wstring MediaPlayer::ErrorDescription() const {
    return engine_ ? engine_->errorDescription() : std::wstring();
}
std::wstring MediaPlayer::GetMediaInfoString(int kind) const {
    return engine_ ? engine_->mediaInfo(kind) : std::wstring();
}

// Runs inside callbacks of the system, where nothing may be thrown: a notification for which there
// is no room any more is dropped.
void MediaPlayer::enqueue(const MediaNotification& notification) {
    try {
        post_([self = self_, opening = opening_, notification] {
            if (*self && (*self)->opening_ == opening) (*self)->deliver(notification);
        });
    } catch (const std::exception&) {
    }
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
