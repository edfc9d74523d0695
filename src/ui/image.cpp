#include "ui/image.h"

#include <oleacc.h>

#include "core/text.h"
#include "ui/accessible.h"
#include "ui/painting.h"
#include "ui/skin.h"

namespace tunovka {

Image::Image(const ImageArgs& args)
    : Window(Args{.name = args.name,
                  .text = args.text,
                  .style = WS_CHILD | (args.visible ? WS_VISIBLE : 0u) |
                           (args.tabStop ? WS_TABSTOP : 0u),
                  .parent = args.parent},
             Creation::WhenPlaced),
      normalKey_(args.normal),
      pressedKey_(args.pressed),
      caption_(args.caption),
      anyButton_(args.anyButton) {
    if (caption_.empty()) setTip(args.text);
}

Size Image::naturalSize() const {
    return Skin::pictureSize(normalKey_, dpi());
}

void Image::showPressed(bool pressed) {
    if (pressed_ == pressed) return;
    pressed_ = pressed;
    invalidate();
    UpdateWindow(handle());
    tellNewState(handle());
}

std::optional<AccessibleFacts> Image::describe() const {
    return AccessibleFacts{.role = ROLE_SYSTEM_PUSHBUTTON,
                           .name = trimBlanks(text()),
                           .state = pressed_ ? STATE_SYSTEM_PRESSED : 0,
                           .action = L"Stlačiť"};
}

void Image::press(MouseButton button) {
    if (held_ != MouseButton::None || (button != MouseButton::Left && !anyButton_)) return;
    held_ = button;
    SetCapture(handle());
    showPressed(true);
    if (onPress) onPress();
}

void Image::release(MouseButton button) {
    if (held_ == MouseButton::None || held_ != button) return;
    held_ = MouseButton::None;
    if (GetCapture() == handle()) ReleaseCapture();
    showPressed(false);
    if (onClick) onClick();
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
        Skin::draw(paint.dc(), key, {0, 0}, dpi());
    } else {
        Skin::drawStretched(paint.dc(), key, {0, 0, size.width, size.height}, dpi());
    }
    const int shift = pressed_ ? scaled(1) : 0;
    if (!caption_.empty()) {
        const RECT area{shift, shift, size.width + shift, size.height + shift};
        drawText(paint.dc(), caption_, area, DT_SINGLELINE | DT_CENTER | DT_VCENTER,
                 Skin::font(dpi()), colors().buttonText);
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
        case WM_CAPTURECHANGED:
            // Something else took the mouse: the button comes up and nothing is done.
            held_ = MouseButton::None;
            showPressed(false);
            return 0;
        case WM_GETDLGCODE:
            return wparam == VK_RETURN ? DLGC_WANTMESSAGE | DLGC_BUTTON : DLGC_BUTTON;
        case WM_KEYDOWN:
            if (wparam != VK_SPACE && wparam != VK_RETURN) return std::nullopt;
            if (!(lparam & 1 << 30)) press(MouseButton::Left);
            return 0;
        case WM_KEYUP:
            if (wparam != VK_SPACE && wparam != VK_RETURN) return std::nullopt;
            release(MouseButton::Left);
            return 0;
        case BM_CLICK:  // a screen reader's default action
            press(MouseButton::Left);
            release(MouseButton::Left);
            return 0;
        case WM_SETFOCUS:
        case WM_KILLFOCUS:
            invalidate();
            return 0;
        default:
            return std::nullopt;
    }
}

}  // namespace tunovka
