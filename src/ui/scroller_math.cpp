#include "ui/scroller_math.h"

#include <algorithm>

#include "core/text.h"

namespace tunovka {

int rowsPerPageRounded(double listHeight, double rowHeight) {
    return rowHeight > 0 ? roundHalfEven(listHeight / rowHeight) : 0;
}

int rowsPerPageCut(double listHeight, double rowHeight) {
    return rowHeight > 0 ? static_cast<int>(listHeight / rowHeight) : 0;
}

void ScrollerMath::layout(const ScrollerTrack& track, std::int64_t rowCount,
                          std::int64_t rowsPerPage) {
    const Counter16 newCount(rowCount), newRows(rowsPerPage);
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

}  // namespace tunovka
