#include "ui/item_mouse.h"

#include <cstdlib>

namespace tunovka {

bool ItemMouse::draggedAway(Point point) const {
    return std::abs(point.x - pressedAt_.x) > GetSystemMetrics(SM_CXDRAG) ||
           std::abs(point.y - pressedAt_.y) > GetSystemMetrics(SM_CYDRAG);
}

void ItemMouse::tryDrag() {
    held_ = MouseButton::None;
    ReleaseCapture();
    if (events_.drag && events_.drag(pressedAt_)) return;
    staysClick_ = true;
    SetCapture(owner_->handle());
    held_ = MouseButton::Left;
}

bool ItemMouse::take(UINT message, WPARAM wparam, LPARAM lparam) {
    const Point point = pointOf(lparam);
    switch (message) {
        case WM_LBUTTONDOWN:
        case WM_RBUTTONDOWN:
        case WM_RBUTTONDBLCLK:
        case WM_MBUTTONDOWN:
            held_ = buttonOf(message);
            pressedAt_ = point;
            staysClick_ = false;
            owner_->focus();
            SetCapture(owner_->handle());
            if (events_.press) events_.press(held_, point);
            return true;
        case WM_LBUTTONDBLCLK:
            owner_->focus();
            if (events_.press) events_.press(MouseButton::Left, point);
            if (events_.doubleClick) events_.doubleClick(point);
            return true;
        case WM_MOUSEMOVE:
            if (held_ != MouseButton::Left || staysClick_ || !(wparam & MK_LBUTTON) ||
                !draggedAway(point))
                return false;
            tryDrag();
            return true;
        case WM_LBUTTONUP:
        case WM_RBUTTONUP:
        case WM_MBUTTONUP: {
            if (held_ != buttonOf(message)) return true;
            const MouseButton button = held_;
            held_ = MouseButton::None;
            ReleaseCapture();
            if (events_.release) events_.release(button, point);
            return true;
        }
        case WM_CAPTURECHANGED:
            held_ = MouseButton::None;
            return false;
        default:
            return false;
    }
}

}  // namespace tunovka
