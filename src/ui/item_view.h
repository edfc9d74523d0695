#pragma once

#include <functional>

#include "ui/window.h"

namespace tunovka {

// What the tree and the list have in common: the mouse and the keyboard of a system control with
// items are told as events. The system keeps a release to itself while it watches for a drag; here
// every press, release, double click and start of a drag is told, in that order.
class ItemView : public Window {
  public:
    // "" without a selection or of an item without a key.
    virtual std::wstring selectedKey() const = 0;

    // Keeps the view, which is not hidden, from painting while it is filled.
    class RedrawOff : NonCopyable {
      public:
        explicit RedrawOff(ItemView& view);
        ~RedrawOff();

      private:
        ItemView& view_;
    };

    // Scrolls by an item when a drag's pointer is near the upper or lower edge.
    void scrollNearEdge(Point point);

    std::function<void(MouseButton, Point)> onMouseDown;  // the item under it is selected already
    std::function<void()> onDoubleClick;
    std::function<void()> onSelectionByKey;           // the selection moved by the keyboard
    std::function<bool(WORD key)> onKeyDown;          // true when used up
    std::function<void(Point screen)> onContextMenu;  // asked by the right button or the keyboard

  protected:
    using Window::Window;

    virtual void pressed(MouseButton button, Point point) = 0;
    virtual void released(MouseButton button, Point point) {
        if (button == MouseButton::Right && onContextMenu) onContextMenu(toScreen(point));
    }
    virtual void doubleClicked(Point point) = 0;
    // The pointer has left the place of the left button's press: drags what is there. False when
    // nothing is dragged; the press then stays a click, wherever its release is.
    virtual bool dragged(Point from) = 0;
    // Lower left corner of the selected item, brought into view; nullopt for no menu.
    virtual std::optional<Point> menuPlace() = 0;
    // The items' upper edge.
    virtual int itemsTop() const { return 0; }
    // The system's answer to a message that may scroll.
    virtual LRESULT answerOfSystem(UINT message, WPARAM wparam, LPARAM lparam) {
        return defaultProcedure(message, wparam, lparam);
    }

    std::optional<LRESULT> onMessage(UINT message, WPARAM wparam, LPARAM lparam) override;

    int redrawOff_ = 0;

  private:
    bool takeMouse(UINT message, WPARAM wparam, Point point);
    LRESULT takeKey(UINT message, WPARAM wparam, LPARAM lparam);

    MouseButton held_ = MouseButton::None;
    Point pressedAt_;
    bool staysClick_ = false;
    DWORD lastEdgeScroll_ = 0;
};

}  // namespace tunovka
