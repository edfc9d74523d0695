// What a form looks like: its strip, rim and ground, and the frame around what has the focus.
#include <algorithm>

#include "ui/form.h"
#include "ui/painting.h"

namespace tunovka {
namespace {

// In 96ths of an inch.
constexpr int kStripHeight = 26, kButtonHeight = 26;
constexpr int kAroundText = 8;  // that a strip or a button leaves at least
constexpr int kFocusFrame = 2;  // how thick it is

// Hands the pointer's drag to the system, which moves the window as if by its caption.
void dragWindow(const Form& form) {
    ReleaseCapture();
    SendMessageW(form.handle(), WM_NCLBUTTONDOWN, HTCAPTION, static_cast<LPARAM>(GetMessagePos()));
}

BOOL CALLBACK applyFont(HWND control, LPARAM) {
    if (Window* window = windowOf(control)) window->applyFont();
    return TRUE;
}

// Where the frame around a control of a form goes, in the form's pixels.
RECT focusFrame(const Form& form, const Window& control) {
    RECT area{};
    GetWindowRect(control.handle(), &area);
    MapWindowPoints(nullptr, form.handle(), reinterpret_cast<POINT*>(&area), 2);
    const int outside = form.scaled(kFocusFrame + control.focusGap());
    InflateRect(&area, outside, outside);
    return area;
}

}  // namespace

void Form::prepareStrip() {
    strip_.onPaint = [this](HDC dc, Size) { paintTitle(dc); };
    strip_.onMouseMove = [this](MouseButton held, Point) {
        if (held == MouseButton::Left) dragWindow(*this);
    };
    const auto add = [](std::optional<Image>& picture, const Image::ImageArgs& args) {
        if (args.name) picture.emplace(args);
    };
    add(closer_, {args_.closer, L"Zavrieť", &strip_, L"zavri1", L"zavri2"});
    add(minimizer_, {args_.minimizer, L"Minimalizovať", &strip_, L"minimize1", L"minimize2"});
    if (closer_) closer_->onClick = [this] { unload(); };
    if (minimizer_) minimizer_->onClick = [this] { minimize(); };
}

int Form::stripHeight() const {
    return std::max(scaled(kStripHeight),
                    Skin::fontHeight(dpi(), Skin::Font::Bold) + scaled(kAroundText));
}

int Form::buttonHeight() const {
    return std::max(scaled(kButtonHeight), Skin::fontHeight(dpi()) + scaled(kAroundText));
}

void Form::layout() {
    if (IsIconic(handle()) || closing_) return;
    EnumChildWindows(handle(), tunovka::applyFont, 0);
    const Size needed = arrange(stripHeight());
    if (!isSizable()) setClientSize(needed);
    layOutStrip();
    // The ground goes with the size, also behind the labels that lie on it.
    RedrawWindow(handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN);
}

// Along the upper edge; on it, from the right, the close and the minimise picture.
void Form::layOutStrip() {
    const int height = stripHeight();
    int right = clientSize().width;
    strip_.setBounds({0, 0, right, height});
    // Last for the Tab key, which is after the window's content first.
    strip_.setTabPlace(HWND_BOTTOM);
    for (std::optional<Image>* picture : {&closer_, &minimizer_}) {
        if (!*picture) continue;
        const Size size = (*picture)->naturalSize();
        right -= size.width + scaled(picture == &closer_ ? 1 : 3);
        (*picture)->setBounds({right, (height - size.height) / 2, size.width, size.height});
        (*picture)->setTabPlace(HWND_TOP);
    }
}

// A soft light from above and two frames.
void Form::paint(HDC dc) const {
    RECT area = toRECT(clientArea());
    fillRect(dc, area, colors().ground);
    fillGradient(dc, {0, 0, area.right, area.bottom / 4}, colors().groundLight, colors().ground);
    frameRect(dc, area, colors().rim);
    if (isSizable()) paintGrip(dc, area);
    InflateRect(&area, -1, -1);
    frameRect(dc, area, colors().rimLight);
    onPaintGround(dc);
    paintFocus(dc);
}

void Form::paintTitle(HDC dc) const {
    const Rect area = strip_.clientArea();
    if (colors().plain)
        fillRect(dc, toRECT(area), colors().title);
    else
        Skin::drawStretched(dc, L"zahlavie", area, dpi());
    drawText(dc, strip_.text(), {scaled(4), 0, area.width, area.height},
             DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS, Skin::font(dpi(), Skin::Font::Bold),
             colors().titleText);
}

// Three dots by three, of which the half towards the corner is painted.
void Form::paintGrip(HDC dc, const RECT& area) const {
    const int dot = scaled(1), step = scaled(2);
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column + row < 3; ++column) {
            const LONG x = area.right - scaled(2) - dot - column * step;
            const LONG y = area.bottom - scaled(2) - dot - row * step;
            fillRect(dc, {x, y, x + dot, y + dot}, colors().rim);
        }
    }
}

// Controls that paint themselves show their focus within; the system's get a frame around them.
void Form::paintFocus(HDC dc) const {
    const Window* focused = windowOf(GetFocus());
    if (!focused || !focused->isSystemControl() || &focused->form() != this) return;
    RECT area = focusFrame(*this, *focused);
    for (int i = 0; i < scaled(kFocusFrame); ++i) {
        frameRect(dc, area, colors().text);
        InflateRect(&area, -1, -1);
    }
}

void Form::repaintAround(const Window& control) {
    const RECT area = focusFrame(*this, control);
    RedrawWindow(handle(), &area, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN);  // neighbours too
}

}  // namespace tunovka
