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

// ---- The arithmetic ----------------------------------------------------------------------------

int rowsPerPageRounded(double listHeight, double rowHeight) {
    return rowHeight > 0 ? roundHalfEven(listHeight / rowHeight) : 0;
}

int rowsPerPageCut(double listHeight, double rowHeight) {
    return rowHeight > 0 ? static_cast<int>(listHeight / rowHeight) : 0;
}

void ScrollerMath::layout(const ScrollerTrack& track, std::int64_t rowCount,
                          std::int64_t rowsPerPage) {
    const std::int16_t newCount = count16(rowCount), newRows = count16(rowsPerPage);
    rowCount_ = newCount;
    rowsPerPage_ = newRows;
    track_ = track;
    thumbHeight_ = track.thumb;
    if (!visible()) {
        fraction_ = 0;
        return;
    }
    const double share = static_cast<double>(rowsPerPage_) / rowCount_;
    const double height = std::max<double>(roundHalfEven(share * travel()), track.leastThumb);
    thumbHeight_ = std::min(height, track.height);
}

int ScrollerMath::thumbTop() const {
    return roundHalfEven(track_.top + fraction_ * std::max(travel(), 0.0));
}

void ScrollerMath::dragTo(double thumbTop) {
    if (travel() <= 0) return;
    fraction_ = std::clamp((thumbTop - track_.top) / travel(), 0.0, 1.0);
}

void ScrollerMath::step(ScrollDirection direction) {
    move(direction == ScrollDirection::Down ? StripMove::Forward : StripMove::Back);
}

void ScrollerMath::move(StripMove move) {
    if (!visible()) return;
    const double row = 1.0 / hiddenRows();
    const double page = std::max(rowsPerPage_ - 1, 1) * row;
    fraction_ = moved(move, fraction_, {.line = row, .page = page, .least = 0, .most = 1});
}

void ScrollerMath::showRow(std::size_t row) {
    if (visible()) fraction_ = std::min(static_cast<double>(row) / hiddenRows(), 1.0);
}

std::size_t ScrollerMath::targetRow(ScrollDirection direction) const {
    if (rowCount_ <= 0) return 0;
    int row = visible() ? roundHalfEven(fraction_ * hiddenRows()) : 0;
    if (direction == ScrollDirection::Down) row += rowsPerPage_;
    return std::clamp<int>(row, 1, rowCount_);
}

// ---- The controls ------------------------------------------------------------------------------

ImageScroller::ImageScroller(Window& parent, ListView& list, RowsPerPage rowsPerPage)
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
    Iposuv.value = [this] { return std::to_wstring(math_.percent()) + L" %"; };
    Iposuv.onPaint = [this](HDC dc, Size size) {
        Skin::drawStretched(dc, kThumbPicture, {0, 0, size.width, size.height}, Iposuv.dpi());
    };
    Iposuv.onMouseDown = [this](MouseButton button, Point point) {
        if (button == MouseButton::Left) grabbedAt_ = point.y;
    };
    Iposuv.onMouseMove = [this](MouseButton held, Point point) {
        if (held == MouseButton::Left) dragThumb(Iposuv.bounds().y + point.y - grabbedAt_);
    };
    bindArrow(Ihore, ScrollDirection::Up);
    bindArrow(Idole, ScrollDirection::Down);
    Timer1.onTick = [this] {
        // The arrow comes up without a release when something else takes the mouse.
        if (!Ihore.isPressed() && !Idole.isPressed()) return Timer1.setInterval(0);
        Timer1.setInterval(kRepeat);
        step();
    };
    list_.onScroll = [this] { follow(list_.firstVisible()); };
}

void ImageScroller::bindArrow(Image& arrow, ScrollDirection direction) {
    arrow.onPress = [this, direction] {
        direction_ = direction;
        Timer1.setInterval(kFirstRepeat);
    };
    arrow.onClick = [this] {
        Timer1.setInterval(0);
        step();
    };
}

ScrollerTrack ImageScroller::track() const {
    const int arrow = Ihore.naturalSize().height;
    return {.top = static_cast<double>(arrow),
            .bottom = static_cast<double>(area_.height - arrow),
            .height = static_cast<double>(area_.height),
            .thumb = static_cast<double>(Skin::pictureSize(kThumbPicture, PicPosuv.dpi()).height),
            .leastThumb = static_cast<double>(PicPosuv.scaled(kLeastThumb))};
}

void ImageScroller::place(const Rect& area) {
    area_ = area;
    list_.applyFont();
    arrange();
    if (active_) refresh();
}

void ImageScroller::refresh() {
    try {
        math_.layout(track(), list_.count(), rowsPerPage_(list_.rowsInView(), 1));
    } catch (...) {
        hide();
        throw;
    }
    active_ = true;
    math_.showRow(list_.firstVisible());
    arrange();
}

void ImageScroller::hide() {
    active_ = false;
    Timer1.setInterval(0);
    arrange();
}

void ImageScroller::arrange() {
    const bool shown = active_ && math_.visible();
    const Size arrow = Ihore.naturalSize();
    const int beside = shown ? arrow.width + PicPosuv.scaled(kGap) : 0;
    list_.setBounds({area_.x, area_.y, area_.width - beside, area_.height});
    PicPosuv.setBounds({area_.right() - arrow.width, area_.y, arrow.width, area_.height});
    Ihore.setBounds({0, 0, arrow.width, arrow.height});
    Idole.setBounds({0, area_.height - arrow.height, arrow.width, arrow.height});
    showThumb();
    PicPosuv.setVisible(shown);
}

void ImageScroller::showThumb() {
    Iposuv.setBounds(
        {0, math_.thumbTop(), Ihore.naturalSize().width, static_cast<int>(math_.thumbHeight())});
    if (shownPercent_ == math_.percent()) return;
    shownPercent_ = math_.percent();
    Iposuv.showValue();
}

void ImageScroller::follow(std::size_t row) {
    if (!active_) return;
    math_.showRow(row);
    showThumb();
}

void ImageScroller::followSelection() {
    if (const auto row = list_.selected()) follow(*row);
}

void ImageScroller::step() {
    math_.step(direction_);
    showThumb();
    scrollList(direction_);
}

void ImageScroller::dragThumb(int top) {
    const int before = Iposuv.bounds().y;
    if (top == before) return;
    math_.dragTo(top);
    showThumb();
    scrollList(top > before ? ScrollDirection::Down : ScrollDirection::Up);
}

void ImageScroller::moveBy(StripMove move) {
    const double before = math_.fraction();
    math_.move(move);
    showThumb();
    scrollList(math_.fraction() > before ? ScrollDirection::Down : ScrollDirection::Up);
}

void ImageScroller::scrollList(ScrollDirection direction) {
    if (!active_) return;
    const std::size_t row = math_.targetRow(direction);
    if (row == 0 || row > list_.count() || list_.model().row(row - 1).key.empty()) return;
    list_.ensureVisible(row - 1);
}

}  // namespace tunovka
