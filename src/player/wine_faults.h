#pragma once

#include <windows.h>
// windows.h first: this one needs its types.
#include <dshow.h>

#include <vector>

#include "core/handle.h"
#include "player/turn.h"

namespace tunovka {

// The two faults of Wine that playing goes round, so that they do not end the program. On Windows
// nothing here does anything.

// Wine counts the users of a sound device without a lock, and two threads may work in freed memory.
// So graphs are built and taken apart one at a time.
struct WineTurn : Turn {
    WineTurn();
};

// Wine stops a decoder while the thread that feeds it still runs and then works in freed memory. So
// the feeder, the filter that reads the file on a thread of its own, is stopped before the rest.
class WineFeeder {
  public:
    // Remembers the feeder of a graph that was never told to pause or run: from then on another
    // thread of Wine may be moving the graph's filters about, and to ask for them is to crash.
    void remember(IGraphBuilder* graph);

    // Comes right before the graph is stopped for good; returns when the feeder's thread has ended.
    void stop(IMediaControl* graph);

  private:
    ComPtr<IBaseFilter> feeder_;
    ComPtr<IMediaSeeking> output_;
    std::vector<ComPtr<IPin>> behind_;  // the inputs that the feeder's data comes to
};

}  // namespace tunovka
