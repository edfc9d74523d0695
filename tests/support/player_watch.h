#pragma once

#include <cmath>

#include "player/media_player.h"
#include "support/person.h"
#include "support/scratch_folder.h"
#include "support/told.h"

namespace tunovka {

// A player over the message loop that writes down what it tells.
class WatchedPlayer {
  public:
    explicit WatchedPlayer(const MediaEngineFactory& createEngine)
        : player_(std::make_unique<MediaPlayer>(createEngine)) {
        player_->onNotification = [this](const MediaNotification& what) { told_ += inShort(what); };
    }

    MediaPlayer* operator->() { return player_.get(); }
    void destroy() { player_.reset(); }

    // What was told since the last asking.
    std::wstring told() {
        awaited_ = 0;
        return std::exchange(told_, {});
    }

    // Waits for a notification behind those that were waited for since the last told(). More may
    // have followed it: a busy machine brings many at once.
    bool untilTold(const std::wstring& what) {
        return runUntil([&] {
            const std::size_t at = told_.find(what, awaited_);
            if (at != told_.npos) awaited_ = at + what.size();
            return at != told_.npos;
        });
    }

  private:
    std::wstring told_;
    std::size_t awaited_ = 0;  // how much of it was looked at by untilTold()
    std::unique_ptr<MediaPlayer> player_;
};

// The lowest bytes of a number, in the order of Windows.
inline std::string littleEndian(std::size_t value, int bytes) {
    std::string result;
    for (; bytes-- > 0; value >>= 8) result += static_cast<char>(value & 0xFF);
    return result;
}

// A WAV file's bytes: one channel of 16 bits, 8,000 a second, of a tone.
inline std::string tone(double seconds) {
    constexpr int rate = 8000;
    std::string data;
    for (int at = 0; at < static_cast<int>(seconds * rate); ++at)
        data += littleEndian(static_cast<std::uint16_t>(std::lround(9000 * std::sin(at * 0.3))), 2);
    return "RIFF" + littleEndian(36 + data.size(), 4) + "WAVEfmt " + littleEndian(16, 4) +
           littleEndian(1, 2) + littleEndian(1, 2) + littleEndian(rate, 4) +
           littleEndian(rate * 2, 4) + littleEndian(2, 2) + littleEndian(16, 2) + "data" +
           littleEndian(data.size(), 4) + data;
}

// Bytes that mean nothing, the same each time.
inline std::string noise(std::size_t size) {
    std::string bytes(size, '\0');
    std::uint32_t state = 1;
    for (char& byte : bytes) byte = static_cast<char>((state = state * 1664525 + 1013904223) >> 24);
    return bytes;
}

// Whether somebody has the file open.
inline bool isHeld(const std::wstring& path) {
    return !locked(path);
}

}  // namespace tunovka
