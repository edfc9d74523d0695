#pragma once

#include <windows.h>
// windows.h first: this one needs its types.
#include <dshow.h>

#include <vector>

#include "core/handle.h"

namespace tunovka {

// Goes round a fault of Wine, which stops a decoder while the thread that feeds it still runs: that
// thread then works in freed memory. The feeder, a filter that reads the file and hands it on from
// a thread of its own, has to stand still before the rest is stopped. On Windows all of this is
// empty.
class WineFeeder {
  public:
    // Remembers the feeder of a graph that was never told to pause or run: from then on another
    // thread of Wine may be moving the graph's filters about, and to ask for them is to crash.
    void remember(IGraphBuilder* graph);

    // To be called right before the graph is stopped for good. Returns when the feeder's thread has
    // ended.
    void stop(IMediaControl* graph);

  private:
    ComPtr<IBaseFilter> feeder_;
    ComPtr<IMediaSeeking> output_;
    std::vector<ComPtr<IPin>> behind_;  // the inputs that the feeder's data comes to
};

}  // namespace tunovka
