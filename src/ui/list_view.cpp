#include "ui/list_view.h"

#include <algorithm>
#include <utility>

#include "ui/painting.h"
#include "ui/skin.h"

namespace tunovka {

constexpr int kPicture = 16;    // sizes in 96ths of an inch
constexpr int kRowPadding = 3;  // above and below a row's text together
constexpr int kMargin = 4;      // left of the picture, and between picture and text
constexpr UINT kTextFormat = DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS;
constexpr std::size_t kLongestText = 1023;  // painting a text of megabytes stands still

constexpr DWORD kStyle = WS_CHILD | WS_BORDER | LVS_REPORT | LVS_OWNERDATA | LVS_SINGLESEL |
                         LVS_SHOWSELALWAYS | LVS_NOSORTHEADER;

ListView::ListView(const ListArgs& args, ListModel& model)
    : ItemView(Args{.name = args.name,
                    .className = WC_LISTVIEWW,
                    .text = args.text,
                    .style = kStyle | (args.header.empty() ? LVS_NOCOLUMNHEADER : 0u),
                    .visible = args.visible,
                    .tabStop = true,
                    .parent = args.parent}),
      model_(model),
      caption_(args.header) {
    setAccessibleName(args.text);
    model_.onChange = [this](const ListChange& change) { show(change); };
}

void ListView::prepare() {
    send(LVM_SETEXTENDEDLISTVIEWSTYLE, 0,
         LVS_EX_DOUBLEBUFFER | LVS_EX_FULLROWSELECT | LVS_EX_LABELTIP);
    const LVCOLUMNW column{.mask = LVCF_TEXT, .pszText = caption_.data()};
    send(LVM_INSERTCOLUMNW, 0, &column);
    send(LVM_SETCOLUMNWIDTH, 0, clientSize().width);
    show({});
}

ListView::~ListView() {
    model_.onChange = nullptr;
}

void ListView::onFont() {
    // Rows are as high as the pictures of this list, which itself is never seen: rows paint theirs.
    const int height = std::max(Skin::fontHeight(dpi()), scaled(kPicture)) + scaled(kRowPadding);
    const ImageList before(reinterpret_cast<HIMAGELIST>(
        send(LVM_SETIMAGELIST, LVSIL_SMALL,
             reinterpret_cast<LPARAM>(Skin::createImageList({1, height}).release()))));
    // The header is as high as its font, which is not the one that it is painted with.
    LOGFONTW font{};
    GetObjectW(Skin::font(dpi()), sizeof font, &font);
    font.lfHeight = MulDiv(font.lfHeight, 4, 3);
    Font taller(CreateFontIndirectW(&font));
    SendMessageW(header(), WM_SETFONT, reinterpret_cast<WPARAM>(taller.get()), FALSE);
    headerFont_ = std::move(taller);
}

HWND ListView::header() const {
    return reinterpret_cast<HWND>(send(LVM_GETHEADER));
}

// The system learns how many rows there are now and which one is the selected one.
void ListView::show(const ListChange& change) {
    dropHighlight_.reset();
    const std::optional<std::size_t> before = selected();
    const std::optional<std::size_t> now = before && change ? change(*before) : std::nullopt;
    if (before && before != now) setSelected(*before, false);
    const bool wasEmpty = shown_ == 0;
    shown_ = model_.count();
    std::optional<RedrawOff> off;
    if (!wasEmpty || shown_ > 0) {
        // All at once: the system would show and hide its scroll bar at each step.
        if (isVisible()) off.emplace(*this);
        send(LVM_SETITEMCOUNT, shown_, LVSICF_NOSCROLL);
    }
    if (now && before != now) setSelected(*now, true);
    if (onRowsChange) onRowsChange();
}

void ListView::select(std::size_t position) {
    // Left to itself, the system may ask every row of the list whether it was the selected one.
    const std::optional<std::size_t> before = selected();
    if (before && before != position) setSelected(*before, false);
    setSelected(position, true);
}

void ListView::setSelected(std::size_t position, bool isSelected) {
    constexpr UINT kStates = LVIS_SELECTED | LVIS_FOCUSED;
    const LVITEMW item{.state = isSelected ? kStates : 0, .stateMask = kStates};
    send(LVM_SETITEMSTATE, position, &item);
}

std::optional<std::size_t> ListView::selected() const {
    const LRESULT focused = send(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_FOCUSED);
    if (focused < 0 || focused >= static_cast<LRESULT>(shown_)) return std::nullopt;
    if (!send(LVM_GETITEMSTATE, focused, LVIS_SELECTED)) return std::nullopt;
    return focused;
}

std::wstring ListView::selectedKey() const {
    const auto position = selected();
    return position ? std::wstring(model_.row(*position).key) : std::wstring();
}

int ListView::itemsTop() const {
    RECT area{};
    if (!header() || !(GetWindowLongW(header(), GWL_STYLE) & WS_VISIBLE)) return 0;
    GetWindowRect(header(), &area);
    return area.bottom - area.top;
}

Rect ListView::rowArea(std::size_t position) const {
    RECT area{LVIR_BOUNDS};
    if (!send(LVM_GETITEMRECT, position, &area)) return {};
    const Rect row = rectOf(area);
    return {0, row.y, clientSize().width, row.height};
}

double ListView::rowsInView() const {
    const double row = rowHeight();
    return row > 0 ? (clientSize().height - itemsTop()) / row : 0;
}

std::optional<std::size_t> ListView::itemAt(Point point) const {
    const int inRows = point.y - itemsTop();
    const int row = static_cast<int>(rowHeight());
    if (row <= 0 || inRows < 0 || !clientArea().contains(point)) return std::nullopt;
    const std::size_t position = firstVisible() + inRows / row;
    if (position >= shown_) return std::nullopt;
    return position;
}

void ListView::setDropHighlight(std::optional<std::size_t> position) {
    if (position == dropHighlight_) return;
    dropHighlight_ = position;
    invalidate();
}

// The system's list may ignore the wheel where it has no scroll bar of its own.
void ListView::turnWheel(int turn) {
    UINT linesPerNotch = 3;
    SystemParametersInfoW(SPI_GETWHEELSCROLLLINES, 0, &linesPerNotch, 0);
    const int most = std::max(static_cast<int>(rowsInView()), 1);  // "a page" is a huge number
    if ((turn > 0) != (turned_ > 0)) turned_ = 0;
    turned_ += turn * static_cast<int>(std::min<UINT>(linesPerNotch, most));
    const int rows = turned_ / WHEEL_DELTA;
    turned_ -= rows * WHEEL_DELTA;
    if (rows != 0) answerOfSystem(LVM_SCROLL, 0, -rows * static_cast<int>(rowHeight()));
}

void ListView::pressed(MouseButton button, Point point) {
    if (const auto position = itemAt(point)) select(*position);
    if (onMouseDown) onMouseDown(button, point);
}

void ListView::doubleClicked(Point point) {
    if (itemAt(point) && onDoubleClick) onDoubleClick();
}

bool ListView::dragged(Point from) {
    const auto position = itemAt(from);
    if (!position || !onBeginDrag) return false;
    onBeginDrag(*position);
    return true;
}

LRESULT ListView::answerOfSystem(UINT message, WPARAM wparam, LPARAM lparam) {
    const std::size_t before = firstVisible();
    const LRESULT answer = defaultProcedure(message, wparam, lparam);
    if (firstVisible() != before && onScroll) onScroll();
    return answer;
}

std::optional<Point> ListView::menuPlace() {
    int top = itemsTop();
    if (const auto position = selected()) {
        answerOfSystem(LVM_ENSUREVISIBLE, *position, FALSE);
        top = rowArea(*position).bottom();
    }
    return Point{scaled(kMargin + kPicture), top};
}

std::optional<LRESULT> ListView::onMessage(UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
        case WM_NCCALCSIZE: {
            // The system's own scroll bar never shows; scrolling by wheel and keys goes on.
            const LONG style = GetWindowLongW(handle(), GWL_STYLE);
            if (style & (WS_VSCROLL | WS_HSCROLL))
                SetWindowLongW(handle(), GWL_STYLE, style & ~(WS_VSCROLL | WS_HSCROLL));
            return std::nullopt;
        }
        case WM_SIZE: {
            const LRESULT answer = defaultProcedure(message, wparam, lparam);
            send(LVM_SETCOLUMNWIDTH, 0, clientSize().width);
            return answer;
        }
        case WM_MOUSEWHEEL:
            turnWheel(GET_WHEEL_DELTA_WPARAM(wparam));
            return 0;
        case WM_VSCROLL:
            return answerOfSystem(message, wparam, lparam);
        case WM_SETFOCUS:
        case WM_KILLFOCUS:
            invalidate();  // the selected row changes its colours, its left edge too
            return std::nullopt;
        case WM_NOTIFY: {  // from the header
            const auto& header = *reinterpret_cast<const NMHDR*>(lparam);
            if (header.code == HDN_BEGINTRACKW || header.code == HDN_BEGINTRACKA) return TRUE;
            if (header.code == HDN_DIVIDERDBLCLICKW || header.code == HDN_DIVIDERDBLCLICKA)
                return 0;
            if (header.code == NM_CUSTOMDRAW)
                return drawHeader(reinterpret_cast<const NMCUSTOMDRAW&>(header));
            return std::nullopt;
        }
        default:
            return ItemView::onMessage(message, wparam, lparam);
    }
}

std::optional<LRESULT> ListView::onNotify(NMHDR& header) {
    switch (header.code) {
        case LVN_GETDISPINFOW: {
            const LVITEMW& item = reinterpret_cast<NMLVDISPINFOW&>(header).item;
            const std::size_t position = item.iItem;
            if (!(item.mask & LVIF_TEXT) || item.cchTextMax <= 0) return 0;
            const std::wstring text = position < shown_ ? model_.row(position).name : L"";
            lstrcpynW(item.pszText, text.c_str(), item.cchTextMax);
            return 0;
        }
        case LVN_ODFINDITEMW: {
            const auto& wanted = reinterpret_cast<const NMLVFINDITEMW&>(header);
            constexpr UINT kBeginning = LVFI_PARTIAL | 0x0004;  // LVFI_SUBSTRING, the same
            const UINT flags = wanted.lvfi.flags;
            if (!(flags & (LVFI_STRING | kBeginning)) || !wanted.lvfi.psz) return -1;
            const auto found =
                model_.findName(wanted.lvfi.psz, std::max(wanted.iStart, 0), !(flags & kBeginning));
            return found ? static_cast<LRESULT>(*found) : -1;
        }
        case LVN_ITEMCHANGED: {
            // The system repaints a row without its left edge.
            const int position = reinterpret_cast<const NMLISTVIEW&>(header).iItem;
            const RECT area = toRECT(position < 0 ? Rect{} : rowArea(position));
            InvalidateRect(handle(), position < 0 ? nullptr : &area, FALSE);
            return 0;
        }
        case NM_CUSTOMDRAW:
            return drawRow(reinterpret_cast<const NMLVCUSTOMDRAW&>(header).nmcd);
        default:
            return std::nullopt;
    }
}

LRESULT ListView::drawRow(const NMCUSTOMDRAW& draw) const {
    if (draw.dwDrawStage == CDDS_PREPAINT) return CDRF_NOTIFYITEMDRAW;
    if (draw.dwDrawStage != CDDS_ITEMPREPAINT) return CDRF_DODEFAULT;
    const HDC dc = draw.hdc;
    const std::size_t position = draw.dwItemSpec;
    if (position >= shown_) return CDRF_SKIPDEFAULT;
    const ListRow shown = model_.row(position);
    const Rect area = rowArea(position);
    RowState state = RowState::Plain;
    if (send(LVM_GETITEMSTATE, position, LVIS_SELECTED))
        state = hasFocus() ? RowState::Selected : RowState::SelectedElsewhere;
    if (dropHighlight_ == position) state = RowState::DropTarget;
    const RowColors row = rowColors(shown.color, state);
    fillRect(dc, toRECT(area), row.ground);
    if (state == RowState::DropTarget) frameRect(dc, toRECT(area), colors().title);
    int left = scaled(kMargin);
    if (!shown.picture.empty()) {
        const int side = scaled(kPicture);
        Skin::draw(dc, shown.picture, {left, area.y + (area.height - side) / 2}, dpi());
        left += side + scaled(kMargin);
    }
    drawText(dc, shown.name.substr(0, kLongestText),
             {left, area.y, area.right() - scaled(kMargin), area.bottom()}, kTextFormat,
             Skin::font(dpi()), row.text);
    return CDRF_SKIPDEFAULT;
}

LRESULT ListView::drawHeader(const NMCUSTOMDRAW& draw) const {
    if (draw.dwDrawStage == CDDS_PREPAINT) return CDRF_NOTIFYITEMDRAW;
    if (draw.dwDrawStage != CDDS_ITEMPREPAINT) return CDRF_DODEFAULT;
    RECT area = draw.rc;
    fillGradient(draw.hdc, area, colors().headerLight, colors().header);
    fillRect(draw.hdc, {area.left, area.bottom - 1, area.right, area.bottom}, colors().edge);
    area.left += scaled(kMargin);
    drawText(draw.hdc, caption_, area, kTextFormat, Skin::font(dpi()), colors().buttonText);
    return CDRF_SKIPDEFAULT;
}

}  // namespace tunovka
