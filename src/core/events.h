#pragma once

#include <cstdint>
#include <functional>

namespace tunovka {

// The program-wide 16-bit flag that a stop button raises; kTrue16 is -1.
extern std::int16_t StopRequested;

// Lets waiting messages run, but looks for them only when 15 ms have passed since it last did, so
// that a loop may call it per item. Returns true when it looked. Inside it any window, item or
// file that the caller knows may go: look up again by key afterwards.
bool yieldToEvents();

// Lets waiting messages run now, whenever the last look was.
void yieldNow();

// Calls `routine` from the message loop, after what runs now has returned. Another thread than that
// of the windows may call it too, once that one has called prepareLoop().
void prepareLoop();
void postToLoop(std::function<void()> routine);

}  // namespace tunovka
