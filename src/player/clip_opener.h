#pragma once

#include <windows.h>

#include <atomic>
#include <memory>
#include <string>
#include <vector>

#include "core/handle.h"
#include "core/loop.h"
#include "player/clip_details.h"
#include "player/playlist_clips.h"
#include "player/playlist_stepper.h"
#include "player/sound_graph.h"

namespace tunovka {

// What is played: a playlist's entries or a single file as a list of one, and where it stands in
// them.
struct ClipList {
    std::shared_ptr<const std::vector<PlaylistClip>> clips;  // null until they are read
    PlaylistStepper stepper;
};

// A request to open the entry that a step leads to, and then its outcome.
struct Opening {
    std::wstring file;  // the file or playlist; read when `list` holds no clips yet
    PlaylistStepper::Step step{};
    ClipList list;

    SoundGraph graph;     // holds the opened clip, nothing on failure
    ClipDetails details;  // of the opened clip
    std::wstring error;   // of a failure, for the person

    std::uintptr_t number = 0;
    std::atomic<bool> cancelled = false;
    KernelHandle thread;
};

// Opens clips on a thread of its own, so that a slow disk or many bad entries do not hold up the
// windows. Used by one thread; at most one opening counts at a time.
class ClipOpener {
  public:
    // The signal is raised with an opening's number when it has ended; take() then gives it out.
    explicit ClipOpener(const LoopSignal& ended) : ended_(ended.address()) {}
    ~ClipOpener();

    // Starts an opening in place of the one that runs.
    void start(std::wstring file, const ClipList& list, PlaylistStepper::Step step);

    bool busy() const { return current_ != nullptr; }

    // The ended opening whose number came with the signal; null for one that was
    // cancelled meanwhile.
    std::shared_ptr<Opening> take(std::uintptr_t number);

    // Gives up the opening that runs. It may hold its file open for a moment longer.
    void cancel();

    // Waits, though not for ever, until cancelled openings have let go of their files.
    void awaitCancelled();

  private:
    LoopSignal::Address ended_;
    std::uintptr_t lastNumber_ = 0;
    std::shared_ptr<Opening> current_;
    std::vector<std::shared_ptr<Opening>> cancelled_;
};

}  // namespace tunovka
