#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "player/playback.h"

namespace tunovka {

// Kinds of clip details for GetMediaInfoString().
inline constexpr int kClipTitle = 8;
inline constexpr int kClipAuthor = 9;

// The explorer's invisible player `mp`. What opens, plays and closes files lives on a thread of its
// own, so that no call waits for a disk or a codec; a thread that is still busy with a file when
// another one is set is left to itself, and a new one takes over.
//
// Notifications reach the owner from the message loop, in the order in which they happened: never
// from inside a call of the owner, never after the player is gone, and never for a file that was
// replaced meanwhile. The owner may do anything inside one, also open another file or destroy the
// player.
class MediaPlayer {
  public:
    explicit MediaPlayer(MediaEngineFactory createEngine = createMediaEngine);
    ~MediaPlayer();
    MediaPlayer(const MediaPlayer&) = delete;
    MediaPlayer& operator=(const MediaPlayer&) = delete;

    // Set by the owner once, before a file is opened.
    std::function<void(int result)> EndOfStream;  // 0: played to its end
    std::function<void()> NewStream;              // new clip details
    std::function<void(int oldState, int newState)>
        PlayStateChange;  // 0 stopped, 1 paused, 2 plays
    std::function<void()> Error;

    // The file or playlist that was set last, as it was written; "" when there is none.
    const std::wstring& FileName() const { return fileName_; }

    // Opens the file and plays it. The call returns at once; a file that cannot be played is told
    // by Error. "" closes what is open.
    void setFileName(const std::wstring& path);

    // Lets go of the open file, so that it can be renamed, moved or deleted; FileName becomes "".
    // Waits for that, though never longer than a second.
    void release();

    void Play();  // opens FileName again when it is not open
    void Pause();
    void Stop();      // lets go of the file as well
    void Previous();  // steps within a playlist; nothing for a single file or past the ends
    void Next();

    double Duration() const;         // seconds, 0 when it is not known (yet)
    double CurrentPosition() const;  // seconds
    void setCurrentPosition(double seconds);

    int Volume() const { return volume_; }  // hundredths of a decibel, -10000 … 0
    void setVolume(int hundredthsOfDecibel);

    std::wstring ErrorDescription() const;            // of the last error, "" without one
    std::wstring GetMediaInfoString(int kind) const;  // 8 title, 9 author; "" when not known

  private:
    struct Shown;
    class PlayingThread;

    Shown shown() const;
    void deliver(unsigned opening, const MediaNotification& notification);
    void leave();

    MediaEngineFactory createEngine_;
    std::wstring fileName_;
    int volume_ = kVolumeDefault;
    unsigned opening_ = 0;  // counts the files that were set; tells stale notifications
    std::shared_ptr<MediaPlayer*> self_;                // emptied by the destructor
    std::shared_ptr<PlayingThread> thread_;             // of the file that is set
    std::vector<std::shared_ptr<PlayingThread>> left_;  // those that may still hold a file
};

}  // namespace tunovka
