#pragma once

#include "player/media_engine.h"

namespace tunovka {

// Turns what an engine observes into the notifications that every engine owes, in their one
// order. Observations may come doubled, late (of a file that was replaced) or in another order;
// what they say that is already known is dropped.
class PlaybackReporter {
  public:
    explicit PlaybackReporter(MediaListener listener);

    // A file is being opened or closed: forgets the former file without a notification.
    void reset();

    // The clip is left for another entry of the list, whose details are not there yet.
    void clipLeft() { announced_ = false; }

    // The details of a clip are there. Told once for a clip that has not started to play; while
    // one plays it means that another began.
    void clipOpened();

    void stateIs(PlayState state);

    // The clip, or the whole list, came to its end; told once for each start.
    void ended(int result);

    // Told once for each opening.
    void failed();

    PlayState state() const { return state_; }

  private:
    void tell(MediaNotification::Kind kind, int first = 0, int second = 0);

    MediaListener listener_;
    PlayState state_ = PlayState::Stopped;
    bool announced_ = false;  // the clip's details were told
    bool started_ = false;    // played since the opening or the last end
    bool failed_ = false;
};

}  // namespace tunovka
