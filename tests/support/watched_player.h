#pragma once

#include <memory>
#include <string>
#include <utility>

#include "core/loop.h"
#include "support/notifications.h"
#include "support/person.h"

namespace tunovka {

// A player over the message loop that writes down what it tells.
class WatchedPlayer {
  public:
    explicit WatchedPlayer(MediaEngineFactory createEngine)
        : player_(std::make_unique<MediaPlayer>(std::move(createEngine), postToLoop)) {
        listen(*player_, told_);
        player_->NewStream = [this] {
            told_.push_back(kNewStream);
            titles_.push_back(player_->GetMediaInfoString(kClipTitle));
        };
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

    // Waits for a notification behind those that were waited for since the last told(). More may
    // have followed it: a busy machine brings many at once.
    bool untilTold(const MediaNotification& what) {
        return runUntil([&] {
            while (awaited_ < told_.size())
                if (told_[awaited_++] == what) return true;
            return false;
        });
    }

    // Lets the loop run for a while in which nothing is to happen.
    static void linger(DWORD milliseconds) {
        runUntil([] { return false; }, milliseconds);
    }

  private:
    Notifications told_;
    std::size_t awaited_ = 0;  // how many of them were looked at by untilTold()
    std::vector<std::wstring> titles_;
    std::unique_ptr<MediaPlayer> player_;
};

}  // namespace tunovka
