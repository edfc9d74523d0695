#include "ui/image.h"

#include <oleacc.h>

#include "core/text.h"
#include "ui/accessible.h"
#include "ui/painting.h"
#include "ui/skin.h"

namespace tunovka {

Image::Image(const ImageArgs& args)
    : Window(Args{
          .name = args.name,
          .text = args.text,
          .style = WS_CHILD | (args.visible ? WS_VISIBLE : 0u) | (args.tabStop ? WS_TABSTOP : 0u),
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
    tellNewState(handle());
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

// While the button is pressed, moves elsewhere are told too. The system tells once when the pointer
// has left, if it is asked to.
void Image::pointerMoved(Point at) {
    const bool inside = clientArea().contains(at);
    if (inside == pointed_) return;
    TRACKMOUSEEVENT leave{sizeof leave, TME_LEAVE, handle(), 0};
    pointed_ = inside && TrackMouseEvent(&leave);
    invalidate();
}

void Image::paint() const {
    const PaintDc paint(handle());
    host().paintGround(paint.dc(), *this);
    const Size size = clientSize();
    const std::wstring& key = shownPicture();
    if (colors().plain && !caption_.empty()) {
        const RECT area{0, 0, size.width, size.height};
        fillRect(paint.dc(), area, colors().button);
        frameRect(paint.dc(), area, colors().buttonText);
    } else if (size == naturalSize()) {
        Skin::draw(paint.dc(), key, {0, 0}, dpi(), look());
    } else {
        Skin::drawStretched(paint.dc(), key, {0, 0, size.width, size.height}, dpi(), look());
    }
    const int shift = isPressed() ? scaled(1) : 0;
    if (!caption_.empty()) {
        const RECT area{shift, shift, size.width + shift, size.height + shift};
        drawText(paint.dc(), caption_, area, DT_SINGLELINE | DT_CENTER | DT_VCENTER,
                 Skin::font(dpi()), isEnabled() ? colors().buttonText : colors().textOff);
    }
    if (hasFocus()) {
        drawFocus(paint.dc(), {0, 0, size.width, size.height}, scaled(1));
    }
}

std::optional<LRESULT> Image::onMessage(UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
        case WM_ERASEBKGND:
            return 1;
        case WM_PAINT:
            paint();
            return 0;
        case WM_LBUTTONDOWN:
        case WM_RBUTTONDOWN:
        case WM_MBUTTONDOWN:
        case WM_LBUTTONDBLCLK:
        case WM_RBUTTONDBLCLK:
        case WM_MBUTTONDBLCLK:
            press(buttonOf(message));
            return 0;
        case WM_LBUTTONUP:
        case WM_RBUTTONUP:
        case WM_MBUTTONUP:
            release(buttonOf(message));
            return 0;
        case WM_MOUSEMOVE:
            pointerMoved(pointOf(lparam));
            return 0;
        case WM_MOUSELEAVE:
            pointed_ = false;
            invalidate();
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
            invalidate();
            return 0;
        case WM_SETFOCUS:
            invalidate();
            return 0;
        default:
            return std::nullopt;
    }
}

}  // namespace tunovka
