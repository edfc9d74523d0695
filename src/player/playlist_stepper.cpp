#include "player/playlist_stepper.h"

namespace tunovka {

bool PlaylistStepper::canStep(Step step) const {
    if (step == Step::First || !current_) return count_ > 0 && step != Step::Previous;
    return step == Step::Next ? *current_ + 1 < count_ : *current_ > 0;
}

bool PlaylistStepper::step(Step step, const Opens& opens) {
    if (!canStep(step)) return false;
    if (step == Step::Previous) {
        for (std::size_t entry = *current_; entry-- > 0;)
            if (opens(entry)) return current_ = entry, true;
        return false;
    }
    const bool fromStart = step == Step::First || !current_;
    for (std::size_t entry = fromStart ? 0 : *current_ + 1; entry < count_; ++entry)
        if (opens(entry)) return current_ = entry, true;
    return false;
}

}  // namespace tunovka
