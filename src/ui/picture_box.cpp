#include "ui/picture_box.h"

#include "ui/form.h"
#include "ui/painting.h"
#include "ui/skin.h"

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
                  .style = WS_CHILD | WS_CLIPCHILDREN | (args.visible ? WS_VISIBLE : 0u),
                  .exStyle = args.container ? DWORD{WS_EX_CONTROLPARENT} : 0u,
                  .parent = args.parent}) {}

std::optional<LRESULT> PictureBox::onMessage(UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
        case WM_NCHITTEST:
            if (form().isOnBorder(pointOf(lparam))) return HTTRANSPARENT;
            return std::nullopt;
        case WM_SETCURSOR:
            if (!cursor) return std::nullopt;
            SetCursor(LoadCursorW(nullptr, cursor));
            return TRUE;
        case WM_ERASEBKGND:
            return 1;
        case WM_PAINT: {
            const PaintDc paint(handle());
            form().paintGround(paint.dc(), *this);
            if (onPaint) onPaint(paint.dc(), clientSize());
            return 0;
        }
        case WM_LBUTTONDOWN:
        case WM_RBUTTONDOWN:
        case WM_LBUTTONDBLCLK:
            SetCapture(handle());
            if (onMouseDown) onMouseDown(buttonOf(message), pointOf(lparam));
            return 0;
        case WM_MOUSEMOVE:
            if (onMouseMove) onMouseMove(heldButton(wparam), pointOf(lparam));
            return 0;
        case WM_LBUTTONUP:
        case WM_RBUTTONUP:
            if (GetCapture() == handle()) ReleaseCapture();
            if (onMouseUp) onMouseUp(buttonOf(message), pointOf(lparam));
            return 0;
        default:
            return std::nullopt;
    }
}

TitleStrip::TitleStrip(const std::wstring& name, const std::wstring& title, Window& parent)
    : PictureBox({.name = name, .text = title, .parent = &parent, .container = true}) {
    onPaint = [this](HDC dc, Size size) {
        Skin::drawStretched(dc, L"zahlavie", {0, 0, size.width, size.height}, dpi());
        const RECT area{scaled(4), 0, size.width, size.height};
        drawText(dc, Window::text(), area, DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS,
                 Skin::font(dpi(), Skin::Font::Bold), MultiMedialny::palette().TitleTextColor);
    };
    onMouseMove = [this](MouseButton held, Point) {
        if (held == MouseButton::Left) dragWindow(form());
    };
    onMouseUp = [this](MouseButton button, Point) {
        if (button == MouseButton::Right && onRightUp) onRightUp();
    };
}

void TitleStrip::setText(const std::wstring& title) {
    PictureBox::setText(title);
    invalidate();
}

void dragWindow(const Form& form) {
    ReleaseCapture();
    SendMessageW(form.handle(), WM_NCLBUTTONDOWN, HTCAPTION, static_cast<LPARAM>(GetMessagePos()));
}

}  // namespace tunovka
