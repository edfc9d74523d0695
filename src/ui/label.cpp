#include "ui/label.h"

#include <oleacc.h>

#include "ui/accessible.h"
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
      status_(args.status),
      color_(MultiMedialny::palette().LabelForeColor) {}

void Label::setText(const std::wstring& text) {
    if (text == this->text()) return;
    Window::setText(text);
    tellNewName(handle());
    invalidate();
}

void Label::setForeColor(Color color) {
    color_ = color;
    invalidate();
}

Size Label::measured(int width) const {
    return measureText(text(), Skin::font(dpi(), font_), width);
}

std::optional<AccessibleFacts> Label::describe() const {
    return AccessibleFacts{.role = status_ ? ROLE_SYSTEM_STATUSBAR : ROLE_SYSTEM_STATICTEXT,
                           .name = text()};
}

void Label::paint() const {
    const PaintDc paint(handle());
    host().paintGround(paint.dc(), *this);
    RECT area{};
    GetClientRect(handle(), &area);
    const UINT lines = wraps_ ? DT_WORDBREAK | DT_EDITCONTROL : DT_SINGLELINE | DT_VCENTER;
    drawText(paint.dc(), text(), area, format_ | lines, Skin::font(dpi(), font_),
             shownText(color_));
}

std::optional<LRESULT> Label::onMessage(UINT message, WPARAM, LPARAM) {
    switch (message) {
        case WM_ERASEBKGND:
            return 1;
        case WM_PAINT:
            paint();
            return 0;
        case WM_GETDLGCODE:
            return DLGC_STATIC;
        default:
            return std::nullopt;
    }
}

}  // namespace tunovka
