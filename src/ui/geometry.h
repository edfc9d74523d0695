#pragma once

#include <algorithm>
#include <cmath>
#include <vector>

namespace tunovka {

// Places and sizes in device pixels.
struct Point {
    int x = 0, y = 0;
    bool operator==(const Point&) const = default;
};

struct Size {
    int width = 0, height = 0;
    bool operator==(const Size&) const = default;
};

struct Rect {
    int x = 0, y = 0, width = 0, height = 0;

    int right() const { return x + width; }
    int bottom() const { return y + height; }
    bool contains(Point p) const { return p.x >= x && p.x < right() && p.y >= y && p.y < bottom(); }
    bool operator==(const Rect&) const = default;
};

// Where a further window opens. `taken` are the visible ones, the program's main window first, on a
// screen that offers `work`. Beside the main window where that leaves room, the right side first;
// else over it, `step` further right and down, with its corner on no other window's.
Rect freePlace(Size size, const std::vector<Rect>& taken, const Rect& work, int step);

// What a key asks of a strip, a scroll bar or a boundary.
enum class StripMove { Back, Forward, PageBack, PageForward, First, Last };

struct StripSteps {
    double line, page;   // how far an arrow key and a page key go
    double least, most;  // the ends of the strip
};

// The value that a move leads to from `at`.
inline double moved(StripMove move, double at, const StripSteps& steps) {
    const double by[] = {-steps.line, steps.line, -steps.page, steps.page, -HUGE_VAL, HUGE_VAL};
    return std::max(steps.least, std::min(at + by[static_cast<int>(move)], steps.most));
}

}  // namespace tunovka
