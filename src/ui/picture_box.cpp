#include "ui/picture_box.h"

#include <oleacc.h>

#include <utility>

#include "core/text.h"
#include "ui/accessible.h"
#include "ui/form.h"

namespace tunovka {
namespace {

MouseButton heldButton(WPARAM keys) {
    if (keys & MK_LBUTTON) return MouseButton::Left;
    if (keys & MK_RBUTTON) return MouseButton::Right;
    return keys & MK_MBUTTON ? MouseButton::Middle : MouseButton::None;
}

}  // namespace

PictureBox::PictureBox(const PictureBoxArgs& args)
    : Window(Args{.name = args.name,
                  .text = args.text,
                  .style = WS_CHILD | WS_CLIPCHILDREN,
                  .exStyle = args.container ? DWORD{WS_EX_CONTROLPARENT} : 0u,
                  .visible = args.visible,
                  .tabStop = args.tabStop,
                  .parent = args.parent}),
      role_(args.role),
      rising_(args.rising) {}

void PictureBox::showValue() {
    invalidate();
    tellNewValue(handle());
}

std::optional<AccessibleFacts> PictureBox::describe() const {
    if (role_ == 0) return std::nullopt;
    AccessibleFacts facts{.role = role_, .name = text()};
    if (value) facts.value = value();
    return facts;
}

bool PictureBox::takeKey(WORD key) {
    if (!onMove) return false;
    const auto move = [&]() -> std::optional<StripMove> {
        switch (key) {
            case VK_LEFT:
                return StripMove::Back;
            case VK_RIGHT:
                return StripMove::Forward;
            case VK_UP:
                return rising_ ? StripMove::Forward : StripMove::Back;
            case VK_DOWN:
                return rising_ ? StripMove::Back : StripMove::Forward;
            case VK_PRIOR:
                return rising_ ? StripMove::PageForward : StripMove::PageBack;
            case VK_NEXT:
                return rising_ ? StripMove::PageBack : StripMove::PageForward;
            case VK_HOME:
                return StripMove::First;
            case VK_END:
                return StripMove::Last;
            default:
                return std::nullopt;
        }
    }();
    if (move) onMove(*move);
    return move.has_value();
}

bool PictureBox::takeWheel(int turned) {
    if (!onWheel) return false;
    turned_ += turned;
    const int notches = turned_ / WHEEL_DELTA;
    turned_ %= WHEEL_DELTA;
    if (notches != 0) onWheel(notches);
    return true;
}

std::optional<LRESULT> PictureBox::onMessage(UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
        case WM_NCHITTEST:
            if (form().isOnBorder(pointOf(lparam))) return HTTRANSPARENT;
            return std::nullopt;
        case WM_SETCURSOR:
            if (!cursor) return std::nullopt;
            SetCursor(LoadCursorW(nullptr, cursor));
            return TRUE;
        case WM_GETDLGCODE:
            if (!onMove) return std::nullopt;
            return DLGC_WANTARROWS;
        case WM_KEYDOWN:
            if (takeKey(static_cast<WORD>(wparam))) return 0;
            return std::nullopt;
        case WM_MOUSEWHEEL:
            if (takeWheel(GET_WHEEL_DELTA_WPARAM(wparam))) return 0;
            return std::nullopt;
        case WM_LBUTTONDOWN:
        case WM_RBUTTONDOWN:
        case WM_LBUTTONDBLCLK:
            SetCapture(handle());
            pressed_ = true;
            if (onMouseDown) onMouseDown(buttonOf(message), pointOf(lparam));
            return 0;
        case WM_MOUSEMOVE:
            // A button that was pressed elsewhere means something elsewhere.
            if (onMouseMove)
                onMouseMove(GetCapture() == handle() ? heldButton(wparam) : MouseButton::None,
                            pointOf(lparam));
            return 0;
        case WM_LBUTTONUP:
        case WM_RBUTTONUP:
            pressed_ = false;
            if (GetCapture() == handle()) ReleaseCapture();
            if (onMouseUp) onMouseUp(buttonOf(message), pointOf(lparam));
            return 0;
        case WM_CAPTURECHANGED:
            if (std::exchange(pressed_, false) && onCaptureLost) onCaptureLost();
            return 0;
        default:
            return Window::onMessage(message, wparam, lparam);
    }
}

}  // namespace tunovka
