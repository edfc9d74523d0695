#include "ui/label.h"

#include "ui/form.h"
#include "ui/painting.h"

namespace tunovka {

Label::Label(const LabelArgs& args)
    : Window(Args{.name = args.name,
                  .text = args.caption,
                  .style = WS_CHILD | (args.visible ? WS_VISIBLE : 0u),
                  .parent = args.parent}),
      format_(args.format),
      font_(args.font),
      wraps_(args.wraps),
      color_(MultiMedialny::palette().LabelForeColor) {}

void Label::setText(const std::wstring& text) {
    if (text == this->text()) return;
    Window::setText(text);
    invalidate();
}

void Label::setForeColor(Color color) {
    color_ = color;
    invalidate();
}

Size Label::measured(int width) const {
    return measureText(text(), Skin::font(dpi(), font_), width);
}

void Label::paint() const {
    const PaintDc paint(handle());
    form().paintGround(paint.dc(), *this);
    RECT area{};
    GetClientRect(handle(), &area);
    const UINT lines = wraps_ ? DT_WORDBREAK | DT_EDITCONTROL : DT_SINGLELINE | DT_VCENTER;
    drawText(paint.dc(), text(), area, format_ | lines, Skin::font(dpi(), font_), color_);
}

std::optional<LRESULT> Label::onMessage(UINT message, WPARAM, LPARAM) {
    switch (message) {
        case WM_ERASEBKGND:
            return 1;
        case WM_PAINT:
            paint();
            return 0;
        default:
            return std::nullopt;
    }
}

}  // namespace tunovka
