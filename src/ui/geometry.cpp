#include "ui/geometry.h"

namespace tunovka {

Rect freePlace(Size size, const std::vector<Rect>& taken, const Rect& work, int step) {
    // The places that the window's upper left corner may have, and where the search for one begins.
    Rect corners{work.x, work.y, std::max(work.width - size.width, 0) + 1,
                 std::max(work.height - size.height, 0) + 1};
    const Rect main = taken.empty() ? Rect{} : taken.front();
    Point start{main.x + step, main.y + step};
    if (main.right() < corners.right()) {
        start = {main.right(), main.y};
        corners = {start.x, corners.y, corners.right() - start.x, corners.height};
    } else if (main.x - size.width >= work.x) {
        start = {main.x - size.width, main.y};
        corners.width = start.x - corners.x + 1;
    }
    // Past an edge it goes on from the opposite one.
    const auto within = [](int at, int least, int count) {
        return least + ((at - least) % count + count) % count;
    };
    Rect place;
    for (std::size_t tries = 0; tries <= taken.size(); ++tries) {
        const int aside = static_cast<int>(tries) * step;
        place = {within(start.x + aside, corners.x, corners.width),
                 within(start.y + aside, corners.y, corners.height), size.width, size.height};
        const bool isFree = std::ranges::none_of(
            taken, [&](const Rect& one) { return one.x == place.x && one.y == place.y; });
        if (isFree) break;
    }
    return place;
}

}  // namespace tunovka
