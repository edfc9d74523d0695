#include "ui/skinned_form.h"

#include <oleacc.h>

#include <algorithm>

#include "core/text.h"
#include "ui/painting.h"
#include "ui/skin.h"

namespace tunovka {
namespace {

// In 96ths of an inch.
constexpr int kStripHeight = 26, kButtonHeight = 26;
constexpr int kAroundText = 8;  // that a strip or a button leaves at least

// Hands the pointer's drag to the system, which moves the window as if by its caption.
void dragWindow(const Form& form) {
    ReleaseCapture();
    SendMessageW(form.handle(), WM_NCLBUTTONDOWN, HTCAPTION, static_cast<LPARAM>(GetMessagePos()));
}

}  // namespace

SkinnedForm::SkinnedForm(const FormArgs& args)
    : Form(args),
      strip_({.name = args.strip,
              .text = L" " + trimBlanks(args.title),
              .parent = this,
              .container = true,
              .role = ROLE_SYSTEM_STATICTEXT}) {
    showTitleBar(*this, false);
    strip_.onPaint = [this](HDC dc, Size) { paintTitle(dc); };
    strip_.onMouseMove = [this](MouseButton held, Point) {
        if (held == MouseButton::Left) dragWindow(*this);
    };
    const auto add = [](std::optional<Image>& picture, const Image::ImageArgs& args) {
        if (args.name) picture.emplace(args);
    };
    add(closer_, {args.closer, L"Zavrieť", &strip_, L"zavri1", L"zavri2"});
    add(minimizer_, {args.minimizer, L"Minimalizovať", &strip_, L"minimize1", L"minimize2"});
    if (closer_) closer_->onClick = [this] { unload(); };
    if (minimizer_) minimizer_->onClick = [this] { minimize(); };
}

void SkinnedForm::paintTitle(HDC dc) const {
    const Rect area = strip_.clientArea();
    if (colors().plain)
        fillRect(dc, toRECT(area), colors().title);
    else
        Skin::drawStretched(dc, L"zahlavie", area, dpi());
    drawText(dc, strip_.text(), {scaled(4), 0, area.width, area.height},
             DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS, Skin::font(dpi(), Skin::Font::Bold),
             colors().titleText);
}

int SkinnedForm::stripHeight() const {
    return std::max(scaled(kStripHeight),
                    Skin::fontHeight(dpi(), Skin::Font::Bold) + scaled(kAroundText));
}

int SkinnedForm::buttonHeight() const {
    return std::max(scaled(kButtonHeight), Skin::fontHeight(dpi()) + scaled(kAroundText));
}

// The strip lies along the upper edge; on it, from the right, the close and the minimise picture.
void SkinnedForm::onLayout() {
    const int height = stripHeight();
    const Size needed = arrange(height);
    if (!isSizable()) setClientSize(needed);
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
void SkinnedForm::onPaintGround(HDC dc, const RECT& area) const {
    fillGradient(dc, {0, 0, area.right, area.bottom / 4}, colors().groundLight, colors().ground);
    RECT frame = area;
    frameRect(dc, frame, colors().rim);
    InflateRect(&frame, -1, -1);
    frameRect(dc, frame, colors().rimLight);
    if (isSizable()) paintGrip(dc, area);
}

// Three dots by three, of which the half towards the corner is painted.
void SkinnedForm::paintGrip(HDC dc, const RECT& area) const {
    const int dot = scaled(1), step = scaled(2);
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column + row < 3; ++column) {
            const LONG x = area.right - scaled(2) - dot - column * step;
            const LONG y = area.bottom - scaled(2) - dot - row * step;
            fillRect(dc, {x, y, x + dot, y + dot}, colors().rim);
        }
    }
}

}  // namespace tunovka
