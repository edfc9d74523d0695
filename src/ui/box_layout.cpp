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

std::vector<Rect> boxButtonRows(const std::vector<int>& captionWidths, int top, int height,
                                int padding, int gap, int innerWidth) {
    std::vector<Rect> buttons;
    std::size_t rowStart = 0;
    int left = 0;
    const auto endRow = [&] {
        const int shift = (innerWidth - (left - gap)) / 2;
        for (; rowStart < buttons.size(); ++rowStart) buttons[rowStart].x += shift;
    };
    for (const int caption : captionWidths) {
        const int width = std::min(caption + padding, innerWidth);
        if (left > 0 && left + width > innerWidth) {
            endRow();
            left = 0;
            top += height + gap;
        }
        buttons.push_back({left, top, width, height});
        left += width + gap;
    }
    endRow();
    return buttons;
}

}  // namespace tunovka
