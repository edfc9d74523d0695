#include "ui/label.h"

#include <oleacc.h>

#include "ui/painting.h"

namespace tunovka {

Label::Label(const LabelArgs& args)
    : Window(Args{
          .name = args.name, .text = args.caption, .visible = args.visible, .parent = args.parent}),
      format_(args.format),
      font_(args.font),
      wraps_(args.wraps),
      status_(args.status),
      color_(args.color) {}

Size Label::measured(int width) const {
    return measureText(text(), Skin::font(dpi(), font_), width);
}

std::optional<AccessibleFacts> Label::describe() const {
    return AccessibleFacts{.role = status_ ? ROLE_SYSTEM_STATUSBAR : ROLE_SYSTEM_STATICTEXT,
                           .name = text()};
}

void Label::paint(HDC dc) const {
    const UINT lines = wraps_ ? DT_WORDBREAK | DT_EDITCONTROL : DT_SINGLELINE | DT_VCENTER;
    drawText(dc, text(), toRECT(clientArea()), format_ | lines, Skin::font(dpi(), font_),
             shownText(color_));
}

std::optional<LRESULT> Label::onMessage(UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_GETDLGCODE) return DLGC_STATIC;
    return Window::onMessage(message, wparam, lparam);
}

}  // namespace tunovka
