#pragma once

#include <vector>

#include "player/media_player.h"

namespace tunovka {

using Notifications = std::vector<MediaNotification>;

inline constexpr MediaNotification kNewStream{MediaNotification::Kind::NewStream};
inline constexpr MediaNotification kError{MediaNotification::Kind::Error};
inline constexpr MediaNotification kEnd{MediaNotification::Kind::EndOfStream, kPlayedToEnd};

constexpr MediaNotification change(int from, int to) {
    return {MediaNotification::Kind::PlayStateChange, from, to};
}

// Lets a player write down what it tells.
inline void listen(MediaPlayer& player, Notifications& told) {
    using Kind = MediaNotification::Kind;
    player.NewStream = [&] { told.push_back(kNewStream); };
    player.Error = [&] { told.push_back(kError); };
    player.EndOfStream = [&](int result) { told.push_back({Kind::EndOfStream, result}); };
    player.PlayStateChange = [&](int from, int to) { told.push_back(change(from, to)); };
}

}  // namespace tunovka
