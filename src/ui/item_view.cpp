#include "ui/item_view.h"

#include <cstdlib>

namespace tunovka {

constexpr int kEdge = 16;         // how near to the edge a drag scrolls, in 96ths of an inch
constexpr DWORD kEdgePause = 60;  // ms between two items of that

ItemView::RedrawOff::RedrawOff(ItemView& view) : view_(view) {
    if (view_.redrawOff_++ == 0) view_.send(WM_SETREDRAW, FALSE);
}

ItemView::RedrawOff::~RedrawOff() {
    if (--view_.redrawOff_ > 0 || !view_.handle()) return;  // without one it would be the desktop
    view_.send(WM_SETREDRAW, TRUE);
    RedrawWindow(view_.handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME);
}

void ItemView::scrollNearEdge(Point point) {
    const int edge = scaled(kEdge);
    const bool up = point.y < itemsTop() + edge, down = point.y >= clientSize().height - edge;
    if ((!up && !down) || GetTickCount() - lastEdgeScroll_ < kEdgePause) return;
    lastEdgeScroll_ = GetTickCount();
    answerOfSystem(WM_VSCROLL, up ? SB_LINEUP : SB_LINEDOWN, 0);
}

// True when the message is used up.
bool ItemView::takeMouse(UINT message, WPARAM wparam, Point point) {
    if (message == WM_LBUTTONDBLCLK) {
        focus();
        pressed(MouseButton::Left, point);
        doubleClicked(point);
        return true;
    }
    if (isPress(message)) {
        held_ = buttonOf(message);
        pressedAt_ = point;
        staysClick_ = false;
        focus();
        SetCapture(handle());
        pressed(held_, point);
        return true;
    }
    if (isRelease(message)) {
        if (held_ != buttonOf(message)) return true;
        held_ = MouseButton::None;
        ReleaseCapture();
        released(buttonOf(message), point);
        return true;
    }
    if (message == WM_CAPTURECHANGED) held_ = MouseButton::None;
    const bool isDrag = message == WM_MOUSEMOVE && held_ == MouseButton::Left && !staysClick_ &&
                        (wparam & MK_LBUTTON) &&
                        (std::abs(point.x - pressedAt_.x) > GetSystemMetrics(SM_CXDRAG) ||
                         std::abs(point.y - pressedAt_.y) > GetSystemMetrics(SM_CYDRAG));
    if (!isDrag) return false;
    held_ = MouseButton::None;
    ReleaseCapture();
    if (dragged(pressedAt_)) return true;
    staysClick_ = true;
    SetCapture(handle());
    held_ = MouseButton::Left;
    return true;
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
