#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "player/playback.h"

namespace tunovka {

// The entries of a playlist, any other file as a list of one. Asks the disk; raises a RuntimeError.
std::vector<ListedFile> filesOf(const std::wstring& file);

// The explorer's invisible player `mp`. Each file that is set is opened, played and closed on a
// thread of its own, so that no call waits for a disk or a codec; a thread whose file is replaced
// is left to itself. Notifications come from the message loop, never for a file that was replaced.
// The owner may do anything inside one, also open another file or destroy the player.
class MediaPlayer : NonCopyable {
  public:
    explicit MediaPlayer(MediaEngineFactory createEngine = createMediaEngine);
    ~MediaPlayer();

    // Set by the owner once, before a file is opened.
    std::function<void(const MediaNotification&)> onNotification;

    // The file or playlist that was set last, as it was written; "" when there is none.
    const std::wstring& FileName() const { return fileName_; }

    // Opens the file and plays it; what cannot be played is told by Error. "" closes what is open.
    void setFileName(std::wstring path);

    // Closes the open file, so that it can be changed. Waits for that for a second at most.
    void release() { startRelease()(); }
    // The same without the waiting, which is returned: for whichever thread.
    std::function<void()> startRelease();

    void Play() { want(PlayState::Playing); }  // opens FileName again when it is not open
    void Pause() { want(PlayState::Paused); }
    void Stop() { want(PlayState::Stopped); }  // closes the file as well
    void Previous() { step(-1); }  // within a playlist; nothing for a single file or past the ends
    void Next() { step(1); }

    double Duration() const { return shown().duration; }         // seconds, 0 when it is not known
    double CurrentPosition() const { return shown().position; }  // seconds
    void setCurrentPosition(double seconds);

    int Volume() const { return volume_; }  // hundredths of a decibel, -10000 … 0
    void setVolume(int hundredthsOfDecibel);

    std::wstring ErrorDescription() const { return shown().error; }  // "" without one
    ClipDetails details() const { return shown().details; }

  private:
    class PlayingThread;
    struct Shown {
        double duration = 0, position = 0;  // seconds
        ClipDetails details;
        std::wstring error;
    };

    Shown shown() const;
    void want(PlayState state);
    void step(int way);

    MediaEngineFactory createEngine_;
    std::wstring fileName_;
    int volume_ = kVolumeDefault;
    std::shared_ptr<MediaPlayer*> self_;                // emptied by the destructor
    std::shared_ptr<PlayingThread> thread_;             // of the file that is set
    std::vector<std::shared_ptr<PlayingThread>> left_;  // those that may still hold a file
};

}  // namespace tunovka
