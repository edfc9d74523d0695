#pragma once

#include <cmath>
#include <cstdint>

#include "core/loop.h"
#include "core/text.h"
#include "ui/image.h"
#include "ui/list_view.h"
#include "ui/picture_box.h"

namespace tunovka {

// Rows in view that count as a page in the editor; the search rounds half to even.
inline int rowsPerPageCut(double rows) {
    return static_cast<int>(rows);
}

// The scroll bar made of pictures, which stands beside a list and drives it, and shows only while
// not all rows fit. It takes the list's onScroll for itself. The keyboard moves it by its thumb;
// its arrows are for the mouse. Its position is a fraction, because a step is far below a pixel.
class ImageScroller {
  public:
    ImageScroller(Window& parent, ListView& list, int (*rowsPerPage)(double rowsInView));

    // Gives list and bar their area in pixels; the list has all of it while the bar is hidden.
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
    void bindArrow(Image& arrow, StripMove move);
    void arrange();
    void showThumb();
    void follow(std::size_t row);
    void moveBy(StripMove move);
    void dragThumb(int top);
    void scrollTo(double fraction);

    bool isNeeded() const { return rowCount_ > page_; }
    int hiddenRows() const { return rowCount_ - page_; }
    int percent() const { return static_cast<int>(std::lround(fraction_ * 100)); }
    // How far a thumb of that height may move between the arrows.
    int travel(int thumbHeight) const;

    ListView& list_;
    int (*rowsPerPage_)(double);
    Timer Timer1;
    Rect area_;
    std::int16_t rowCount_ = 0, page_ = 0;  // no rows while the bar is hidden by hide()
    int thumbHeight_ = 0;
    double fraction_ = 0;
    StripMove held_{};   // what the pressed arrow does
    int grabbedAt_ = 0;  // place on the thumb that a drag holds
    int shownPercent_ = 0;
};

}  // namespace tunovka
