#pragma once

#include <algorithm>

namespace tunovka {

// What a key asks of a strip, a scroll bar or a boundary.
enum class StripMove { Back, Forward, PageBack, PageForward, First, Last };

struct StripSteps {
    double line, page;   // how far an arrow key and a page key go
    double least, most;  // the ends of the strip
};

// The value that a move leads to from `at`.
inline double moved(StripMove move, double at, const StripSteps& steps) {
    switch (move) {
        case StripMove::First:
            return steps.least;
        case StripMove::Last:
            return steps.most;
        case StripMove::Back:
            at -= steps.line;
            break;
        case StripMove::Forward:
            at += steps.line;
            break;
        case StripMove::PageBack:
            at -= steps.page;
            break;
        case StripMove::PageForward:
            at += steps.page;
            break;
    }
    return std::max(steps.least, std::min(at, steps.most));
}

}  // namespace tunovka
