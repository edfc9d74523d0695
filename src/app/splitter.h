#pragma once

#include <functional>

#include "ui/picture_box.h"

namespace tunovka {

class Form;

// The boundary `Medzera` between two controls: while it is dragged the frame `Obdlznik` shows where
// it would come to lie, and the release moves it there. With the focus it is moved by keys.
class Splitter {
  public:
    explicit Splitter(Form& form);

    // Place of the boundary, and the least and the most that its left edge may be, in pixels.
    void setBounds(const Rect& bounds, int least, int most);

    std::function<void(int left)> onMoved;  // the new left edge

    PictureBox Medzera;
    PictureBox Obdlznik;

  private:
    void Medzera_MouseDown(MouseButton button, Point at);
    void Medzera_MouseMove(MouseButton held, Point at);
    void Medzera_MouseUp(MouseButton button);
    void endDrag();

    int least_ = 0, most_ = 0;
    int pressedAt_ = -1;  // from the left edge; -1 while nobody drags
};

}  // namespace tunovka
