#pragma once

#include <windows.h>

#include <functional>

#include "ui/window.h"

namespace tunovka {

// The mouse over a tree or a list, which the system's own controls swallow in part: while they
// watch for a drag they keep the release to themselves. Here every press, release, double click
// and start of a drag is told, in that order and by every button.
class ItemMouse {
  public:
    struct Events {
        std::function<void(MouseButton, Point)> press;    // after the item was selected
        std::function<void(MouseButton, Point)> release;  // not after a drag
        std::function<void(Point)> doubleClick;
        // The pointer has left the press of the left button behind: drags what is at that point.
        // False when nothing is dragged; the press then stays a click, wherever its release is.
        std::function<bool(Point)> drag;
    };

    explicit ItemMouse(Window& owner, Events events) : owner_(&owner), events_(std::move(events)) {}

    // Takes a mouse message; true when it is used up.
    bool take(UINT message, WPARAM wparam, LPARAM lparam);

  private:
    bool draggedAway(Point point) const;
    void tryDrag();

    Window* owner_;
    Events events_;
    MouseButton held_ = MouseButton::None;
    Point pressedAt_;
    bool staysClick_ = false;
};

}  // namespace tunovka
