#pragma once

#include <exception>
#include <functional>
#include <utility>

namespace tunovka {

// Takes an exception that nobody handled: it becomes a notice, shown from the message loop and one
// at a time.
void reportUnhandled(std::exception_ptr failure);

// Replaces what reportUnhandled() does; frmBox installs its notice here.
void setUnhandledReporter(std::function<void(std::exception_ptr)> reporter);

// Runs a routine at the border to the system: nothing thrown passes.
template <typename Routine>
void guarded(Routine&& routine) noexcept {
    try {
        std::forward<Routine>(routine)();
    } catch (...) {
        reportUnhandled(std::current_exception());
    }
}

}  // namespace tunovka
