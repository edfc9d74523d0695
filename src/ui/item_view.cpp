#include "ui/item_view.h"

#include <cstdlib>

namespace tunovka {
namespace {

constexpr int kEdge = 16;         // how near to the edge a drag scrolls, in 96ths of an inch
constexpr DWORD kEdgePause = 60;  // ms between two items of that

}  // namespace

void ItemView::scrollNearEdge(Point point) {
    const int edge = scaled(kEdge);
    const bool up = point.y < itemsTop() + edge, down = point.y >= clientSize().height - edge;
    if ((!up && !down) || GetTickCount() - lastEdgeScroll_ < kEdgePause) return;
    lastEdgeScroll_ = GetTickCount();
    answerOfSystem(WM_VSCROLL, up ? SB_LINEUP : SB_LINEDOWN, 0);
}

bool ItemView::hasLeft(Point point) const {
    return std::abs(point.x - pressedAt_.x) > GetSystemMetrics(SM_CXDRAG) ||
           std::abs(point.y - pressedAt_.y) > GetSystemMetrics(SM_CYDRAG);
}

void ItemView::tryDrag() {
    held_ = MouseButton::None;
    ReleaseCapture();
    if (dragged(pressedAt_)) return;
    staysClick_ = true;
    SetCapture(handle());
    held_ = MouseButton::Left;
}

// True when the message is used up.
bool ItemView::takeMouse(UINT message, WPARAM wparam, Point point) {
    switch (message) {
        case WM_LBUTTONDOWN:
        case WM_RBUTTONDOWN:
        case WM_RBUTTONDBLCLK:
        case WM_MBUTTONDOWN:
            held_ = buttonOf(message);
            pressedAt_ = point;
            staysClick_ = false;
            focus();
            SetCapture(handle());
            pressed(held_, point);
            return true;
        case WM_LBUTTONDBLCLK:
            focus();
            pressed(MouseButton::Left, point);
            doubleClicked(point);
            return true;
        case WM_MOUSEMOVE:
            if (held_ != MouseButton::Left || staysClick_ || !(wparam & MK_LBUTTON) ||
                !hasLeft(point))
                return false;
            tryDrag();
            return true;
        case WM_LBUTTONUP:
        case WM_RBUTTONUP:
        case WM_MBUTTONUP: {
            const MouseButton button = buttonOf(message);
            if (held_ != button) return true;
            held_ = MouseButton::None;
            ReleaseCapture();
            released(button, point);
            return true;
        }
        case WM_CAPTURECHANGED:
            held_ = MouseButton::None;
            return false;
        default:
            return false;
    }
}

LRESULT ItemView::takeKey(UINT message, WPARAM wparam, LPARAM lparam) {
    const std::wstring before = selectedKey();
    const LRESULT answer = answerOfSystem(message, wparam, lparam);
    const std::wstring now = selectedKey();
    if (now != before && !now.empty() && onSelectionByKey) onSelectionByKey();
    return answer;
}

std::optional<LRESULT> ItemView::onMessage(UINT message, WPARAM wparam, LPARAM lparam) {
    if (takeMouse(message, wparam, pointOf(lparam))) return 0;
    switch (message) {
        case WM_KEYDOWN:
            if (onKeyDown && onKeyDown(static_cast<WORD>(wparam))) return 0;
            return takeKey(message, wparam, lparam);
        case WM_CHAR:  // typing finds an item
            return wparam == VK_RETURN ? 0 : takeKey(message, wparam, lparam);
        case WM_CONTEXTMENU:
            if (lparam != -1 || !onContextMenu) return 0;
            if (const auto place = menuPlace()) onContextMenu(toScreen(*place));
            return 0;
        default:
            return std::nullopt;
    }
}

}  // namespace tunovka
