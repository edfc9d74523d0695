#pragma once

#include <cstdint>
#include <exception>
#include <functional>
#include <utility>

#include "core/non_copyable.h"

struct tagMSG;

// The one message loop of the program: what runs, waits, posts and reports failures goes through
// it. Everything here but posting and raising belongs to the thread of the windows.

namespace tunovka {

// ---- Long loops -------------------------------------------------------------------------------

// The program-wide 16-bit flag that a stop button raises: -1, else 0.
extern std::int16_t StopRequested;

// Lets waiting messages run; cheap enough for every item of a loop, because it looks for them only
// every 15 ms. Inside it any window, item or file may go: look up again by key afterwards.
void yieldToEvents();

// Lets waiting messages run now, whenever the last look was.
void yieldNow();

// What a long loop calls once per item; both may be empty. While events run it holds no references
// into data that commands change.
struct LoopHooks {
    std::function<void()> letEventsRun{};
    std::function<bool()> cancelled{};

    // Lets events run; false when the loop is to end.
    bool next() const {
        if (letEventsRun) letEventsRun();
        return !cancelled || !cancelled();
    }
};

// ---- Running and waiting ----------------------------------------------------------------------

// Runs the program until somebody asks it to quit.
void runLoop();

// Runs events for as long as the condition holds, which is asked after each of them: a modal
// window. A request to quit ends it and is passed on to the outer loop.
void runLoopWhile(const std::function<bool()>& condition);

// What runs while a wait lasts: every event, or only painting and timers. In the second case
// clicks and keys stay in their queue until the wait is over, and the person gives it up by Escape.
enum class Meanwhile { AllEvents, PaintingOnly };

// Waits until an object of the system (a worker's thread, an event) is signalled. False when it was
// not: the person gave up, it is cancelled (asked after each event), or the program is to quit.
bool waitForObject(void* object, Meanwhile meanwhile, const std::function<bool()>& cancelled = {});

// ---- Posting ----------------------------------------------------------------------------------

// Calls routines from the message loop, in their order, after what runs now has returned. Other
// threads may post, too, once that of the windows has called prepareLoop().
void postToLoop(std::function<void()> routine);
void prepareLoop();

// Calls a routine from the message loop each time that it is raised, as long as it lives.
class LoopSignal : NonCopyable {
  public:
    explicit LoopSignal(std::function<void()> routine);
    ~LoopSignal();

    void raise() const;

  private:
    friend class LoopWindow;
    friend class Timer;
    std::function<void()> routine_;
    std::uintptr_t number_;
};

// Calls its tick from the message loop every so many milliseconds while the interval is not 0.
class Timer : NonCopyable {
  public:
    Timer() : elapsed_([this] { tick(); }) {}
    ~Timer() { setInterval(0); }

    std::function<void()> onTick;

    void setInterval(unsigned milliseconds);
    unsigned interval() const { return interval_; }

  private:
    void tick() const {
        if (interval_ && onTick) onTick();  // a last tick may come after the end
    }

    LoopSignal elapsed_;
    unsigned interval_ = 0;
};

// Asked for every message before it is dispatched; true when it was dealt with.
void setMessageFilter(std::function<bool(tagMSG&)> filter);

// ---- Failures ---------------------------------------------------------------------------------

// Takes what nobody handled: the program shows a notice.
void setFailureHandler(std::function<void(std::exception_ptr)> handler);

void reportFailure(std::exception_ptr failure) noexcept;

// Runs a routine at the border to the system: nothing thrown passes, it is reported.
template <typename Routine>
void guarded(Routine&& routine) noexcept {
    try {
        std::forward<Routine>(routine)();
    } catch (...) {
        reportFailure(std::current_exception());
    }
}

}  // namespace tunovka
