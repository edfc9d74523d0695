#pragma once

#include <windows.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "core/events.h"
#include "player/media_player.h"

namespace tunovka {

using Notifications = std::vector<MediaNotification>;

inline constexpr MediaNotification kNewStream{MediaNotification::Kind::NewStream};
inline constexpr MediaNotification kError{MediaNotification::Kind::Error};
inline constexpr MediaNotification kEnd{MediaNotification::Kind::EndOfStream, kPlayedToEnd};

constexpr MediaNotification change(int from, int to) {
    return {MediaNotification::Kind::PlayStateChange, from, to};
}

// A player over the message loop that writes down what it tells.
class WatchedPlayer {
  public:
    explicit WatchedPlayer(MediaEngineFactory createEngine)
        : player_(std::make_unique<MediaPlayer>(std::move(createEngine), postToLoop)) {
        using Kind = MediaNotification::Kind;
        player_->NewStream = [this] {
            told_.push_back(kNewStream);
            titles_.push_back(player_->GetMediaInfoString(kClipTitle));
        };
        player_->Error = [this] { told_.push_back(kError); };
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

    // The titles at every NewStream so far.
    const std::vector<std::wstring>& titles() const { return titles_; }

    // Lets the loop run until something is so; false when it is not within the limit (ms).
    template <typename Condition>
    static bool until(Condition reached, DWORD limit = 30000) {
        const DWORD start = GetTickCount();
        while (!reached()) {
            if (GetTickCount() - start > limit) return false;
            MsgWaitForMultipleObjects(0, nullptr, FALSE, 5, QS_ALLINPUT);
            yieldNow();
        }
        return true;
    }
    // Waits for a notification behind those that were waited for since the last told(). More may
    // have followed it: a busy machine brings many at once.
    bool untilTold(const MediaNotification& what) {
        return until([&] {
            while (awaited_ < told_.size())
                if (told_[awaited_++] == what) return true;
            return false;
        });
    }

    // Lets the loop run for a while in which nothing is to happen.
    static void linger(DWORD milliseconds) {
        until([] { return false; }, milliseconds);
    }

  private:
    Notifications told_;
    std::size_t awaited_ = 0;  // how many of them were looked at by untilTold()
    std::vector<std::wstring> titles_;
    std::unique_ptr<MediaPlayer> player_;
};

}  // namespace tunovka
