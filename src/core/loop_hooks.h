#pragma once

#include <functional>

namespace tunovka {

// What a long loop calls once per item. Both may be empty. While events run the user may close the
// window or press other buttons, so a loop holds no references into data that commands change.
struct LoopHooks {
    std::function<void()> letEventsRun{};
    std::function<bool()> cancelled{};

    // Lets events run; false when the loop is to end.
    bool next() const {
        if (letEventsRun) letEventsRun();
        return !cancelled || !cancelled();
    }
};

}  // namespace tunovka
