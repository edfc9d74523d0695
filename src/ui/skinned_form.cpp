#include "ui/skinned_form.h"

#include <oleacc.h>

#include <algorithm>

#include "core/text.h"
#include "ui/accessible.h"
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

TitleStrip::TitleStrip(const wchar_t* name, const std::wstring& title, Form& form)
    : PictureBox({.name = name, .text = title, .parent = &form, .container = true}) {
    onPaint = [this](HDC dc, Size size) {
        if (colors().plain)
            fillRect(dc, {0, 0, size.width, size.height}, colors().title);
        else
            Skin::drawStretched(dc, L"zahlavie", {0, 0, size.width, size.height}, dpi());
        const RECT area{scaled(4), 0, size.width, size.height};
        drawText(dc, Window::text(), area, DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS,
                 Skin::font(dpi(), Skin::Font::Bold), colors().titleText);
    };
    onMouseMove = [this, &form](MouseButton held, Point) {
        if (held == MouseButton::Left) dragWindow(form);
    };
    onMouseUp = [this](MouseButton button, Point) {
        if (button == MouseButton::Right && onRightUp) onRightUp();
    };
}

void TitleStrip::setText(const std::wstring& title) {
    PictureBox::setText(title);
    invalidate();
}

std::optional<AccessibleFacts> TitleStrip::describe() const {
    return AccessibleFacts{.role = ROLE_SYSTEM_STATICTEXT, .name = trimBlanks(text())};
}

SkinnedForm::SkinnedForm(const SkinArgs& args)
    : Form(FormArgs{.name = args.name,
                    .caption = args.title,
                    .size = args.size,
                    .minimum = args.minimum,
                    .owner = args.owner}),
      strip_(args.strip, L" " + trimBlanks(args.title), *this) {
    showTitleBar(*this, false);
    const auto add = [](std::optional<Image>& picture, const Image::ImageArgs& args) {
        if (args.name) picture.emplace(args);
    };
    add(closer_, {args.closer, L"Zavrieť", &strip_, L"zavri1", L"zavri2"});
    add(minimizer_, {args.minimizer, L"Minimalizovať", &strip_, L"minimize1", L"minimize2"});
    if (closer_) closer_->onClick = [this] { unload(); };
    if (minimizer_) minimizer_->onClick = [this] { minimize(); };
}

int SkinnedForm::stripHeight() const {
    return std::max(scaled(kStripHeight),
                    Skin::fontHeight(dpi(), Skin::Font::Bold) + scaled(kAroundText));
}

int SkinnedForm::buttonHeight() const {
    return std::max(scaled(kButtonHeight), Skin::fontHeight(dpi()) + scaled(kAroundText));
}

void SkinnedForm::layoutCentred() {
    layout();
    centre();
}

void SkinnedForm::onLayout() {
    const Size needed = arrange(stripHeight());
    if (!isSizable()) setClientSize(needed);
    placeStrip();
}

// The strip along the upper edge; on it, from the right, the close and the minimise picture.
void SkinnedForm::placeStrip() {
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
