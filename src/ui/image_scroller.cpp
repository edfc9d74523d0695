#include "ui/image_scroller.h"

#include <oleacc.h>

#include <algorithm>

#include "core/text.h"
#include "ui/painting.h"
#include "ui/skin.h"

namespace tunovka {
namespace {

constexpr int kGap = 2;         // between list and track; sizes in 96ths of an inch
constexpr int kLeastThumb = 8;  // so that it can be grasped
constexpr UINT kFirstRepeat = 300, kRepeat = 50;  // ms
constexpr wchar_t kThumbPicture[] = L"posuv1";

Image::ImageArgs arrow(const wchar_t* name, const wchar_t* text, Window& track,
                       const wchar_t* normal, const wchar_t* pressed) {
    return {.name = name,
            .text = text,
            .parent = &track,
            .normal = normal,
            .pressed = pressed,
            .tabStop = false};
}

}  // namespace

ImageScroller::ImageScroller(Window& parent, ListView& list, int (*rowsPerPage)(double))
    : PicPosuv({.name = L"PicPosuv", .parent = &parent, .visible = false, .container = true}),
      Ihore(arrow(L"Ihore", L"Nahor", PicPosuv, L"hornyhore1", L"hornyhore2")),
      Idole(arrow(L"Idole", L"Nadol", PicPosuv, L"hornydole1", L"hornydole2")),
      Iposuv({.name = L"Iposuv",
              .text = L"Posúvač zoznamu",
              .parent = &PicPosuv,
              .role = ROLE_SYSTEM_SCROLLBAR,
              .tabStop = true}),
      list_(list),
      rowsPerPage_(rowsPerPage) {
    PicPosuv.onPaint = [](HDC dc, Size size) {
        const RECT area{0, 0, size.width, size.height};
        fillRect(dc, area, colors().track);
        frameRect(dc, area, colors().edge);
    };
    PicPosuv.onWheel = [this](int notches) { list_.turnWheel(notches * WHEEL_DELTA); };
    Iposuv.onMove = [this](StripMove move) { moveBy(move); };
    Iposuv.value = [this] { return decimal(percent()) + L" %"; };
    Iposuv.onPaint = [this](HDC dc, Size size) {
        Skin::drawStretched(dc, kThumbPicture, {0, 0, size.width, size.height}, Iposuv.dpi());
    };
    Iposuv.onMouseDown = [this](MouseButton button, Point point) {
        if (button == MouseButton::Left) grabbedAt_ = point.y;
    };
    Iposuv.onMouseMove = [this](MouseButton held, Point point) {
        if (held == MouseButton::Left) dragThumb(Iposuv.bounds().y + point.y - grabbedAt_);
    };
    bindArrow(Ihore, StripMove::Back);
    bindArrow(Idole, StripMove::Forward);
    Timer1.onTick = [this] {
        // The arrow comes up without a release when something else takes the mouse.
        if (!Ihore.isPressed() && !Idole.isPressed()) return Timer1.setInterval(0);
        Timer1.setInterval(kRepeat);
        moveBy(held_);
    };
    list_.onScroll = [this] { follow(list_.firstVisible()); };
}

void ImageScroller::bindArrow(Image& arrow, StripMove move) {
    arrow.onPress = [this, move] {
        held_ = move;
        Timer1.setInterval(kFirstRepeat);
    };
    arrow.onClick = [this] {
        Timer1.setInterval(0);
        moveBy(held_);
    };
}

int ImageScroller::travel(int thumbHeight) const {
    return std::max(0, area_.height - 2 * Ihore.naturalSize().height - thumbHeight);
}

void ImageScroller::place(const Rect& area) {
    area_ = area;
    arrange();
    if (rowCount_ > 0) refresh();
}

void ImageScroller::refresh() {
    try {
        rowCount_ = count16(list_.count());
        page_ = count16(rowsPerPage_(list_.rowsInView()));
    } catch (...) {
        hide();
        throw;
    }
    if (isNeeded()) {
        const int picture = Skin::pictureSize(kThumbPicture, PicPosuv.dpi()).height;
        const double share = static_cast<double>(page_) / rowCount_;
        const int height = roundHalfEven(share * travel(picture));
        thumbHeight_ = std::min(std::max(height, PicPosuv.scaled(kLeastThumb)), area_.height);
    }
    follow(list_.firstVisible());
    arrange();
}

void ImageScroller::hide() {
    rowCount_ = 0;
    Timer1.setInterval(0);
    arrange();
}

void ImageScroller::arrange() {
    const Size arrow = Ihore.naturalSize();
    const int beside = isNeeded() ? arrow.width + PicPosuv.scaled(kGap) : 0;
    list_.setBounds({area_.x, area_.y, area_.width - beside, area_.height});
    PicPosuv.setBounds({area_.right() - arrow.width, area_.y, arrow.width, area_.height});
    Ihore.setBounds({0, 0, arrow.width, arrow.height});
    Idole.setBounds({0, area_.height - arrow.height, arrow.width, arrow.height});
    showThumb();
    PicPosuv.setVisible(isNeeded());
}

void ImageScroller::showThumb() {
    const Size arrow = Ihore.naturalSize();
    const int top = roundHalfEven(arrow.height + fraction_ * travel(thumbHeight_));
    Iposuv.setBounds({0, top, arrow.width, thumbHeight_});
    if (shownPercent_ == percent()) return;
    shownPercent_ = percent();
    Iposuv.showValue();
}

// Moves the thumb to where that row belongs.
void ImageScroller::follow(std::size_t row) {
    fraction_ = isNeeded() ? std::min(static_cast<double>(row) / hiddenRows(), 1.0) : 0;
    showThumb();
}

void ImageScroller::followSelection() {
    if (const auto row = list_.selected()) follow(*row);
}

void ImageScroller::dragThumb(int top) {
    const int length = travel(thumbHeight_);
    if (top == Iposuv.bounds().y || length == 0) return;
    const double fraction = static_cast<double>(top - Ihore.naturalSize().height) / length;
    scrollTo(std::clamp(fraction, 0.0, 1.0));
}

void ImageScroller::moveBy(StripMove move) {
    if (!isNeeded()) return;
    const double row = 1.0 / hiddenRows(), page = std::max(page_ - 1, 1) * row;
    scrollTo(moved(move, fraction_, {.line = row, .page = page, .least = 0, .most = 1}));
}

// The row that belongs there comes into view: at the page's top when moving up, else at its bottom.
void ImageScroller::scrollTo(double fraction) {
    const bool down = fraction >= fraction_;
    fraction_ = fraction;
    showThumb();
    const int row = roundHalfEven(fraction * hiddenRows()) + (down ? page_ : 0);
    list_.ensureVisible(std::clamp<int>(row, 1, rowCount_) - 1);
}

}  // namespace tunovka
