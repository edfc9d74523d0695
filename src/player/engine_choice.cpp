#include "core/events.h"
#include "player/directshow_engine.h"
#include "player/media_player.h"

namespace tunovka {

std::unique_ptr<MediaEngine> createMediaEngine(MediaListener listener) {
    return std::make_unique<DirectShowEngine>(std::move(listener));
}

MediaPlayer::MediaPlayer() : MediaPlayer(createMediaEngine, postToLoop) {}

}  // namespace tunovka
