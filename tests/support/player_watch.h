#pragma once

#include <algorithm>
#include <cmath>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "player/media_player.h"
#include "support/person.h"

namespace tunovka {

using Notifications = std::vector<MediaNotification>;

inline constexpr MediaNotification kNewClip{MediaNotification::Kind::NewStream};
inline constexpr MediaNotification kFailure{MediaNotification::Kind::Error};
inline constexpr MediaNotification kEnd{MediaNotification::Kind::EndOfStream, kPlayedToEnd};

constexpr MediaNotification change(int from, int to) {
    return {MediaNotification::Kind::PlayStateChange, from, to};
}

// A player over the message loop that writes down what it tells.
class WatchedPlayer {
  public:
    explicit WatchedPlayer(const MediaEngineFactory& createEngine)
        : player_(std::make_unique<MediaPlayer>(createEngine)) {
        using Kind = MediaNotification::Kind;
        player_->NewStream = [this] {
            told_.push_back(kNewClip);
            titles_.push_back(player_->GetMediaInfoString(kClipTitle));
        };
        player_->Error = [this] { told_.push_back(kFailure); };
        player_->EndOfStream = [this](int result) { told_.push_back({Kind::EndOfStream, result}); };
        player_->PlayStateChange = [this](int from, int to) { told_.push_back(change(from, to)); };
    }

    MediaPlayer* operator->() { return player_.get(); }
    void destroy() { player_.reset(); }

    // What was told since the last asking.
    Notifications told() {
        awaited_ = 0;
        return std::exchange(told_, {});
    }

    bool has(const MediaNotification& what) const {
        return std::find(told_.begin(), told_.end(), what) != told_.end();
    }

    // The titles at every NewStream so far.
    const std::vector<std::wstring>& titles() const { return titles_; }

    // Waits for a notification behind those that were waited for since the last told(). More may
    // have followed it: a busy machine brings many at once.
    bool untilTold(const MediaNotification& what) {
        return runUntil([&] {
            while (awaited_ < told_.size())
                if (told_[awaited_++] == what) return true;
            return false;
        });
    }

  private:
    Notifications told_;
    std::size_t awaited_ = 0;  // how many of them were looked at by untilTold()
    std::vector<std::wstring> titles_;
    std::unique_ptr<MediaPlayer> player_;
};

// A WAV file's bytes: one channel of 16 bits, 8,000 a second, of a tone.
inline std::string tone(double seconds) {
    constexpr int rate = 8000;
    const auto samples = static_cast<int>(seconds * rate);
    const auto number = [](std::uint32_t value, int bytes) {
        std::string result;
        for (; bytes-- > 0; value >>= 8) result += static_cast<char>(value & 0xFF);
        return result;
    };
    std::string data;
    for (int at = 0; at < samples; ++at)
        data += number(static_cast<std::uint16_t>(std::lround(9000 * std::sin(at * 0.3))), 2);
    return "RIFF" + number(36 + data.size(), 4) + "WAVEfmt " + number(16, 4) + number(1, 2) +
           number(1, 2) + number(rate, 4) + number(rate * 2, 4) + number(2, 2) + number(16, 2) +
           "data" + number(data.size(), 4) + data;
}

// Bytes that mean nothing, the same each time.
inline std::string noise(std::size_t size) {
    std::string bytes(size, '\0');
    std::uint32_t state = 1;
    for (char& byte : bytes) byte = static_cast<char>((state = state * 1664525 + 1013904223) >> 24);
    return bytes;
}

}  // namespace tunovka
