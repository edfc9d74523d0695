#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>

#include "core/loop.h"
#include "ui/image.h"
#include "ui/list_view.h"
#include "ui/picture_box.h"

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
    std::int16_t rowCount_ = 0, rowsPerPage_ = 0;
    double thumbHeight_ = 8;
    double fraction_ = 0;
};

// The vertical scroll bar made of pictures, which stands beside a list and drives it. It shows
// only while not all rows fit. It takes the list's onScroll for itself. The keyboard moves it by
// its thumb; its arrows are for the mouse.
class ImageScroller {
  public:
    // How many of the rows in view count as a page: rowsPerPageRounded or rowsPerPageCut.
    using RowsPerPage = int (*)(double listHeight, double rowHeight);

    ImageScroller(Window& parent, ListView& list, RowsPerPage rowsPerPage);

    // Gives list and bar their area in the parent, in pixels; the list has all of it while the bar
    // is hidden.
    void place(const Rect& area);

    // Takes over how many rows the list has now and which one is the first in view, and shows or
    // hides the bar. Past 32,767 rows it hides and raises kOverflow.
    void refresh();
    void hide();

    // Moves the thumb to where the list's selected row belongs.
    void followSelection();

    PictureBox PicPosuv;  // the track
    Image Ihore, Idole;   // the arrow buttons
    PictureBox Iposuv;    // the thumb

  private:
    void bindArrow(Image& arrow, ScrollDirection direction);
    void arrange();
    ScrollerTrack track() const;
    void showThumb();
    void follow(std::size_t row);
    void step();
    void moveBy(StripMove move);
    void dragThumb(int top);
    void scrollList(ScrollDirection direction);

    ListView& list_;
    RowsPerPage rowsPerPage_;
    ScrollerMath math_;
    Timer Timer1;
    Rect area_;
    bool active_ = false;  // the row count is taken over
    ScrollDirection direction_ = ScrollDirection::Down;
    int grabbedAt_ = 0;  // place on the thumb that a drag holds
    int shownPercent_ = 0;
};

}  // namespace tunovka
