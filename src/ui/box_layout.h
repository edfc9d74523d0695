#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "ui/geometry.h"

namespace tunovka {

// What a message box shows. Captions are separated by ";" and keep their blanks; a lone CR in the
// text ends a line.
struct BoxRequest {
    std::wstring title;
    std::wstring text;
    std::wstring buttons;

    bool operator==(const BoxRequest&) const = default;
};

// The box's arithmetic; sizes in pixels.

// Captions between ";", blanks kept; an empty list is one empty caption.
std::vector<std::wstring> boxCaptions(std::wstring_view buttons);

// Height of the message: the lines that the text's width on one line would fill (rounded half to
// even, plus one), or the height that it takes when wrapped, whichever is larger.
int boxTextHeight(int widthOnOneLine, int labelWidth, int lineHeight, int wrappedHeight);

// Places of the buttons in a row: each as wide as its caption plus `padding`, `gap` apart, the row
// centred in `innerWidth`. What does not fit there goes on in a next row, and a button is never
// wider than a row.
std::vector<Rect> boxButtonRows(const std::vector<int>& captionWidths, int top, int height,
                                int padding, int gap, int innerWidth);

}  // namespace tunovka
