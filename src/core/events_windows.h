#pragma once

#include <windows.h>

#include <exception>
#include <functional>

#include "core/events.h"

// What the window layer plugs into letting events run.

namespace tunovka {

// Asked for every message before it is dispatched; true when it was dealt with (keyboard moves
// between controls, short cuts).
void setMessageFilter(std::function<bool(MSG&)> filter);

// Takes what a routine given to postToLoop() threw.
void setUnhandledHandler(std::function<void(std::exception_ptr)> handler);

}  // namespace tunovka
