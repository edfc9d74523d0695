#include "ui/read_only_text.h"

#include "ui/colors.h"
#include "ui/form.h"
#include "ui/skin.h"

namespace tunovka {
namespace {

// Until it is placed. Without a width the system would break the text at each letter, which takes
// seconds.
constexpr Rect kFirstBounds{0, 0, 400, 20};

DWORD styleOf(const ReadOnlyText::ReadOnlyTextArgs& args) {
    DWORD style = WS_CHILD | WS_TABSTOP | ES_READONLY;
    if (args.visible) style |= WS_VISIBLE;
    style |= args.wraps ? ES_MULTILINE | ES_AUTOVSCROLL : ES_AUTOHSCROLL;
    if (args.scrollBar) style |= WS_VSCROLL;
    return style;
}

}  // namespace

ReadOnlyText::ReadOnlyText(const ReadOnlyTextArgs& args)
    : Window(Args{.name = args.name,
                  .className = L"EDIT",
                  .text = args.text,
                  .style = styleOf(args),
                  .parent = args.parent,
                  .bounds = kFirstBounds}),
      ground_(args.ground) {
    applyFont();
}

void ReadOnlyText::applyFont() {
    const HFONT font = Skin::font(dpi());
    if (font == font_) return;  // the system would break the whole text into lines again
    font_ = font;
    send(WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
    send(EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, 0);
}

int ReadOnlyText::heightAt(int width) {
    Rect area = bounds();
    if (area.width != width) {
        area.width = width;
        setBounds(area);
    }
    return static_cast<int>(send(EM_GETLINECOUNT)) * Skin::fontHeight(dpi());
}

HBRUSH ReadOnlyText::onColors(HDC dc) {
    const Color ground = colors().plain ? colors().ground : ground_;
    SetTextColor(dc, colors().text);
    SetBkColor(dc, ground);
    SetDCBrushColor(dc, ground);
    return static_cast<HBRUSH>(GetStockObject(DC_BRUSH));
}

std::optional<LRESULT> ReadOnlyText::onMessage(UINT message, WPARAM, LPARAM) {
    // Otherwise a text of several lines would keep the form's keys to itself.
    if (message == WM_GETDLGCODE) return DLGC_WANTARROWS;
    return std::nullopt;
}

}  // namespace tunovka
