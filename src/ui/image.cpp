#include "ui/image.h"

#include <oleacc.h>

#include "core/text.h"
#include "ui/painting.h"

namespace tunovka {

Image::Image(const ImageArgs& args)
    : Window(Args{.name = args.name,
                  .text = args.text,
                  .visible = args.visible,
                  .tabStop = args.tabStop,
                  .parent = args.parent}),
      normalKey_(args.normal),
      pressedKey_(args.pressed),
      caption_(args.caption),
      anyButton_(args.anyButton) {
    if (caption_.empty()) setTip(args.text);
}

Size Image::naturalSize() const {
    return Skin::pictureSize(normalKey_, dpi());
}

Skin::Look Image::look() const {
    if (!isEnabled()) return Skin::Look::Off;
    return pointed_ && !isPressed() ? Skin::Look::Lit : Skin::Look::Plain;
}

void Image::showState() {
    invalidate();
    UpdateWindow(handle());
    NotifyWinEvent(EVENT_OBJECT_STATECHANGE, handle(), OBJID_CLIENT, CHILDID_SELF);
}

std::optional<AccessibleFacts> Image::describe() const {
    return AccessibleFacts{.role = ROLE_SYSTEM_PUSHBUTTON,
                           .name = trimBlanks(text()),
                           .state = isPressed() ? STATE_SYSTEM_PRESSED : 0,
                           .action = L"Stlačiť"};
}

void Image::press(MouseButton button) {
    if (isPressed() || (button != MouseButton::Left && !anyButton_)) return;
    held_ = button;
    SetCapture(handle());
    showState();
    if (onPress) onPress();
}

// The button comes up, and nothing is done.
void Image::cancelPress() {
    if (!isPressed()) return;
    held_ = MouseButton::None;
    byKey_ = false;
    if (GetCapture() == handle()) ReleaseCapture();
    showState();
}

void Image::release(MouseButton button) {
    if (!isPressed() || held_ != button) return;
    cancelPress();
    if (onClick) onClick();
}

// Moves elsewhere are told while it is pressed; that the pointer has left is told once, if asked.
void Image::pointerMoved(Point at) {
    const bool inside = clientArea().contains(at);
    if (inside == pointed_) return;
    TRACKMOUSEEVENT leave{sizeof leave, TME_LEAVE, handle(), 0};
    pointed_ = inside && TrackMouseEvent(&leave);
    invalidate();
}

void Image::paint(HDC dc) const {
    const Rect area = clientArea();
    const std::wstring& key = isPressed() ? pressedKey_ : normalKey_;
    if (colors().plain && !caption_.empty()) {
        fillRect(dc, toRECT(area), colors().button);
        frameRect(dc, toRECT(area), colors().buttonText);
    } else {
        Skin::drawStretched(dc, key, area, dpi(), look());
    }
    if (caption_.empty()) return;
    const int shift = isPressed() ? scaled(1) : 0;
    drawText(dc, caption_, toRECT({shift, shift, area.width, area.height}),
             DT_SINGLELINE | DT_CENTER | DT_VCENTER, Skin::font(dpi()),
             isEnabled() ? colors().buttonText : colors().textOff);
}

std::optional<LRESULT> Image::onMessage(UINT message, WPARAM wparam, LPARAM lparam) {
    if (isPress(message)) return press(buttonOf(message)), 0;
    if (isRelease(message)) return release(buttonOf(message)), 0;
    switch (message) {
        case WM_MOUSEMOVE:
            pointerMoved(pointOf(lparam));
            return 0;
        case WM_MOUSELEAVE:
            pointerMoved({-1, -1});
            return 0;
        case WM_ENABLE:
            invalidate();
            return 0;
        case WM_CAPTURECHANGED:  // something else took the mouse
            cancelPress();
            return 0;
        case WM_GETDLGCODE:
            return wparam == VK_RETURN ? DLGC_WANTMESSAGE | DLGC_BUTTON : DLGC_BUTTON;
        case WM_KEYDOWN:
            if (wparam != VK_SPACE && wparam != VK_RETURN) return std::nullopt;
            if (!(lparam & 1 << 30)) {
                byKey_ = !isPressed();
                press(MouseButton::Left);
            }
            return 0;
        case WM_KEYUP:
            if (wparam != VK_SPACE && wparam != VK_RETURN) return std::nullopt;
            release(MouseButton::Left);
            return 0;
        case BM_CLICK:  // a screen reader's default action
            press(MouseButton::Left);
            release(MouseButton::Left);
            return 0;
        case WM_KILLFOCUS:
            if (byKey_) cancelPress();  // its release goes elsewhere
            return Window::onMessage(message, wparam, lparam);
        default:
            return Window::onMessage(message, wparam, lparam);
    }
}

}  // namespace tunovka
