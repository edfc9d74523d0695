#pragma once

#include "core/loop.h"
#include "ui/image.h"
#include "ui/list_view.h"
#include "ui/picture_box.h"
#include "ui/scroller_math.h"

namespace tunovka {

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
