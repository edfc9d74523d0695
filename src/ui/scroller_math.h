#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>

#include "core/counter16.h"
#include "ui/geometry.h"

namespace tunovka {

// Where the thumb of a picture scroll bar may move, in the units of the owning window.
struct ScrollerTrack {
    double top = 0;     // bottom edge of the up button
    double bottom = 0;  // top edge of the down button
    double height = 0;  // of the whole track, buttons included
    double thumb = 8;   // height of the thumb's picture
    double leastThumb = 8;
};

enum class ScrollDirection { Up, Down };

// Whole rows that fit into a list. The search rounds half to even, the editor cuts; 0 when the
// rows have no height.
int rowsPerPageRounded(double listHeight, double rowHeight);
int rowsPerPageCut(double listHeight, double rowHeight);

// The arithmetic of a picture scroll bar that drives a list. The position is kept as a fraction
// from 0 (top) to 1 (bottom), because a step over thousands of rows is far below a pixel.
class ScrollerMath {
  public:
    // Takes the list's measures over; the position stays. Raises kOverflow for counts past
    // 32,767 and then changes nothing.
    void layout(const ScrollerTrack& track, std::int64_t rowCount, std::int64_t rowsPerPage);

    bool visible() const { return rowCount_ > rowsPerPage_; }
    double thumbHeight() const { return thumbHeight_; }
    int thumbTop() const;  // rounded half to even
    double fraction() const { return fraction_; }
    int percent() const { return static_cast<int>(std::lround(fraction_ * 100)); }

    void dragTo(double thumbTop);          // kept between the buttons
    void step(ScrollDirection direction);  // as one press of an arrow button
    void move(StripMove move);             // as a key
    void showRow(std::size_t row);         // 0-based: the thumb goes where that row belongs

    // The row to bring into view for the present position, 1-based: at the page's top when moving
    // up, at its bottom when moving down. 0 for an empty list.
    std::size_t targetRow(ScrollDirection direction) const;

  private:
    double travel() const { return track_.bottom - track_.top - thumbHeight_; }
    int hiddenRows() const { return rowCount_ - rowsPerPage_; }

    ScrollerTrack track_;
    Counter16 rowCount_, rowsPerPage_;
    double thumbHeight_ = 8;
    double fraction_ = 0;
};

}  // namespace tunovka
