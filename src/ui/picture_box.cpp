#include "ui/picture_box.h"

#include <oleacc.h>

#include <algorithm>
#include <iterator>
#include <utility>

#include "core/text.h"
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
    NotifyWinEvent(EVENT_OBJECT_VALUECHANGE, handle(), OBJID_CLIENT, CHILDID_SELF);
}

std::optional<AccessibleFacts> PictureBox::describe() const {
    if (role_ == 0) return std::nullopt;
    AccessibleFacts facts{.role = role_, .name = trimBlanks(text())};
    if (value) facts.value = value();
    return facts;
}

bool PictureBox::takeKey(WORD key) {
    static constexpr struct {
        WORD key;
        StripMove move, whereItRises;
    } kKeys[] = {{VK_LEFT, StripMove::Back, StripMove::Back},
                 {VK_RIGHT, StripMove::Forward, StripMove::Forward},
                 {VK_UP, StripMove::Back, StripMove::Forward},
                 {VK_DOWN, StripMove::Forward, StripMove::Back},
                 {VK_PRIOR, StripMove::PageBack, StripMove::PageForward},
                 {VK_NEXT, StripMove::PageForward, StripMove::PageBack},
                 {VK_HOME, StripMove::First, StripMove::First},
                 {VK_END, StripMove::Last, StripMove::Last}};
    const auto* known = std::ranges::find(kKeys, key, [](const auto& one) { return one.key; });
    if (!onMove || known == std::end(kKeys)) return false;
    onMove(rising_ ? known->whereItRises : known->move);
    return true;
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
    if (isPress(message)) {
        SetCapture(handle());
        pressed_ = true;
        if (onMouseDown) onMouseDown(buttonOf(message), pointOf(lparam));
        return 0;
    }
    if (isRelease(message)) {
        pressed_ = false;
        if (GetCapture() == handle()) ReleaseCapture();
        if (onMouseUp) onMouseUp(buttonOf(message), pointOf(lparam));
        return 0;
    }
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
        case WM_MOUSEMOVE:
            // A button that was pressed elsewhere means something elsewhere.
            if (onMouseMove)
                onMouseMove(GetCapture() == handle() ? heldButton(wparam) : MouseButton::None,
                            pointOf(lparam));
            return 0;
        case WM_CAPTURECHANGED:
            if (std::exchange(pressed_, false) && onCaptureLost) onCaptureLost();
            return 0;
        default:
            return Window::onMessage(message, wparam, lparam);
    }
}

}  // namespace tunovka
