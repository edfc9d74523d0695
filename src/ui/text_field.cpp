#include "ui/text_field.h"

#include <algorithm>

#include "ui/colors.h"
#include "ui/skin.h"

namespace tunovka {

TextField::TextField(const TextFieldArgs& args)
    : Window(Args{.name = args.name,
                  .className = L"EDIT",
                  .text = args.text,
                  .style = WS_CHILD | (args.ground ? ES_READONLY : 0u) |
                           (args.wraps ? ES_MULTILINE | ES_AUTOVSCROLL : ES_AUTOHSCROLL) |
                           (args.scrollBar ? WS_VSCROLL : 0u),
                  .visible = args.visible,
                  .tabStop = true,
                  .parent = args.parent}),
      ground_(args.ground) {}

void TextField::onFont() {
    if (ground_) send(EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN);
}

int TextField::heightAt(int width) {
    Rect area = bounds();
    area.width = width;
    area.height = std::max(area.height, 1);
    setBounds(area);
    return static_cast<int>(send(EM_GETLINECOUNT)) * Skin::fontHeight(dpi());
}

void TextField::selectStart(std::size_t letters) {
    send(EM_SETSEL, 0, static_cast<LPARAM>(letters));
}

HBRUSH TextField::onColors(HDC dc) {
    if (!ground_) return nullptr;
    const Color ground = colors().plain ? colors().ground : *ground_;
    SetTextColor(dc, colors().text);
    SetBkColor(dc, ground);
    SetDCBrushColor(dc, ground);
    return static_cast<HBRUSH>(GetStockObject(DC_BRUSH));
}

std::optional<LRESULT> TextField::onMessage(UINT message, WPARAM, LPARAM) {
    // Otherwise a text of several lines would keep the form's keys to itself.
    if (message == WM_GETDLGCODE && ground_) return DLGC_WANTARROWS;
    return std::nullopt;
}

}  // namespace tunovka
