#include "core/loop.h"
#include "player/directshow_engine.h"
#include "player/media_control_engine.h"
#include "player/media_player.h"

namespace tunovka {

std::unique_ptr<MediaEngine> createMediaEngine(MediaListener listener) {
    if (auto control = MediaControlEngine::create(listener)) return control;
    return std::make_unique<DirectShowEngine>(std::move(listener));
}

MediaPlayer::MediaPlayer() : MediaPlayer(createMediaEngine, postToLoop) {}

}  // namespace tunovka
