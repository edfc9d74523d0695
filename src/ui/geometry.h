#pragma once

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

}  // namespace tunovka
