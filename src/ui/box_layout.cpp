#include "ui/box_layout.h"

#include <algorithm>

#include "core/text.h"

namespace tunovka {

std::vector<std::wstring> boxCaptions(std::wstring_view buttons) {
    return split(buttons, L';');
}

int boxTextHeight(int widthOnOneLine, int labelWidth, int lineHeight, int wrappedHeight) {
    const int lines = roundHalfEven(static_cast<double>(widthOnOneLine) / labelWidth + 1);
    return std::max(lines * lineHeight, wrappedHeight);
}

std::vector<Rect> boxButtonRow(const std::vector<int>& captionWidths, int top, int height,
                               int padding, int gap, int innerWidth) {
    std::vector<Rect> row;
    int left = 0;
    for (const int width : captionWidths) {
        row.push_back({left, top, width + padding, height});
        left += width + padding + gap;
    }
    const int shift = std::max(0, (innerWidth - (left - gap)) / 2);
    for (Rect& button : row) button.x += shift;
    return row;
}

}  // namespace tunovka
