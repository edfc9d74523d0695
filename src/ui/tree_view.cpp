#include "ui/tree_view.h"

#include <algorithm>
#include <cstring>

#include "core/errors.h"
#include "ui/colors.h"

namespace tunovka {

constexpr std::size_t kLongestText = 1023;
constexpr int kPicture = 16;  // side of a node's picture, in 96ths of an inch

TreeView::TreeView(const wchar_t* name, const std::wstring& accessibleName, Window& parent)
    : ItemView(Args{.name = name,
                    .className = WC_TREEVIEWW,
                    .text = accessibleName,
                    .style = WS_CHILD | WS_BORDER | TVS_HASBUTTONS | TVS_HASLINES |
                             TVS_LINESATROOT | TVS_SHOWSELALWAYS | TVS_DISABLEDRAGDROP |
                             TVS_NOTOOLTIPS,
                    .tabStop = true,
                    .parent = &parent}) {
    setAccessibleName(accessibleName);
}

void TreeView::prepare() {
    send(TVM_SETEXTENDEDSTYLE, TVS_EX_DOUBLEBUFFER, TVS_EX_DOUBLEBUFFER);
}

void TreeView::fillImageList() {
    ImageList list = Skin::createImageList({scaled(kPicture), scaled(kPicture)}, pictures_);
    send(TVM_SETIMAGELIST, TVSIL_NORMAL, list.get());
    Ilist_ = std::move(list);
}

void TreeView::onFont() {
    fillImageList();
    send(TVM_SETITEMHEIGHT, Skin::lineHeight(dpi()));
}

// The place of a picture in the system's list, which takes it in when it is asked for first.
int TreeView::imageOf(const std::wstring& pictureKey) {
    if (pictureKey.empty()) return I_IMAGENONE;
    const auto place = std::ranges::find(pictures_, pictureKey) - pictures_.begin();
    if (place == std::ssize(pictures_)) {
        pictures_.push_back(pictureKey);
        fillImageList();
    }
    return static_cast<int>(place);
}

void TreeView::add(const NodeArgs& args) {
    HTREEITEM parent = args.parentKey.empty() ? TVI_ROOT : itemOf(args.parentKey);
    const auto [node, isNew] =
        nodes_.try_emplace(args.key, Node{nullptr, args.foreground, args.tag});
    if (!isNew) throw RuntimeError(kKeyNotUnique, args.key);
    // Nobody reads more of a node, and painting a text of megabytes stands still.
    const std::wstring text = args.text.substr(0, kLongestText);
    TVINSERTSTRUCTW insert{};
    insert.hParent = parent;
    insert.hInsertAfter = TVI_LAST;
    insert.item.mask = TVIF_TEXT | TVIF_PARAM | TVIF_STATE | TVIF_IMAGE | TVIF_SELECTEDIMAGE;
    insert.item.pszText = const_cast<wchar_t*>(text.c_str());
    insert.item.lParam = reinterpret_cast<LPARAM>(&*node);
    insert.item.iImage = insert.item.iSelectedImage = imageOf(args.imageKey);
    insert.item.stateMask = TVIS_BOLD;
    insert.item.state = args.bold ? TVIS_BOLD : 0;
    node->second.item = reinterpret_cast<HTREEITEM>(send(TVM_INSERTITEMW, 0, &insert));
    if (node->second.item) return measureSome();
    nodes_.erase(node);
    throw RuntimeError(kOutOfMemory);
}

// Switching the drawing on may measure every new node: it must not find tens of thousands.
void TreeView::measureSome() {
    constexpr std::size_t kAtOnce = 1000;
    if (redrawOff_ == 0 || nodes_.size() % kAtOnce != 0) return;
    send(WM_SETREDRAW, TRUE);
    send(WM_SETREDRAW, FALSE);
}

void TreeView::clear(const LoopHooks& hooks) {
    const RedrawOff off(*this);
    // A node outlives its item: deleting an item moves the selection, which asks for its node.
    doomed_.swap(nodes_);
    if (GetCapture() == handle()) ReleaseCapture();  // a deaf tree would not hear the release
    send(TVM_SELECTITEM, TVGN_CARET);
    emptying_ = &hooks;
    send(TVM_DELETEITEM, 0, TVI_ROOT);
    emptying_ = nullptr;
    for (const MSG& told : std::exchange(toldMeanwhile_, {}))
        send(told.message, told.wParam, told.lParam);
}

// For a tree in the midst of its emptying, which is one message to the system: it must not be asked
// anything then, and what is set of it is set afterwards.
LRESULT TreeView::answerDeaf(UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_SIZE || message == WM_SETFONT || message == TVM_SETIMAGELIST ||
        message == TVM_SETITEMHEIGHT)
        toldMeanwhile_.push_back({handle(), message, wparam, lparam, 0, {}});
    return DefWindowProcW(handle(), message, wparam, lparam);
}

void TreeView::rename(const std::wstring& key, const std::wstring& newKey,
                      const std::wstring& text) {
    if (newKey != key && contains(newKey)) throw RuntimeError(kKeyNotUnique, newKey);
    const TVITEMW item{
        .mask = TVIF_TEXT, .hItem = itemOf(key), .pszText = const_cast<wchar_t*>(text.c_str())};
    auto handle = nodes_.extract(key);
    handle.key() = newKey;
    handle.mapped().tag = text;
    nodes_.insert(std::move(handle));
    send(TVM_SETITEMW, 0, &item);
}

std::wstring TreeView::keyOf(HTREEITEM handle) const {
    if (!handle) return {};
    TVITEMW item{.mask = TVIF_PARAM, .hItem = handle};
    if (!send(TVM_GETITEMW, 0, &item)) return {};
    return reinterpret_cast<const Nodes::value_type*>(item.lParam)->first;
}

HTREEITEM TreeView::related(HTREEITEM item, UINT relation) const {
    return reinterpret_cast<HTREEITEM>(send(TVM_GETNEXTITEM, relation, item));
}

std::wstring TreeView::text(const std::wstring& key) const {
    std::wstring buffer(kLongestText + 1, L'\0');
    TVITEMW item{.mask = TVIF_TEXT,
                 .hItem = itemOf(key),
                 .pszText = buffer.data(),
                 .cchTextMax = static_cast<int>(buffer.size())};
    send(TVM_GETITEMW, 0, &item);
    return item.pszText;
}

// `place` becomes one of TVHT_...
HTREEITEM TreeView::hitTest(Point point, UINT& place) const {
    TVHITTESTINFO test{};
    test.pt = {point.x, point.y};
    const LRESULT item = send(TVM_HITTEST, 0, &test);
    place = test.flags;
    return reinterpret_cast<HTREEITEM>(item);
}

std::wstring TreeView::nodeAt(Point point) const {
    UINT place = 0;
    HTREEITEM item = hitTest(point, place);
    const UINT over = TVHT_ONITEM | TVHT_ONITEMRIGHT | TVHT_ONITEMINDENT | TVHT_ONITEMBUTTON;
    return place & over ? keyOf(item) : std::wstring();
}

Rect TreeView::nodeArea(const std::wstring& key) const {
    RECT area{};
    const HTREEITEM item = itemOf(key);
    // The message takes the item in the area's place.
    std::memcpy(&area, &item, sizeof item);  // NOLINT(bugprone-sizeof-expression): a handle
    if (!send(TVM_GETITEMRECT, TRUE, &area)) return {};
    return rectOf(area);
}

void TreeView::setDropHighlight(const std::wstring& key) {
    if (key == dropHighlight()) return;
    send(TVM_SELECTITEM, TVGN_DROPHILITE, key.empty() ? nullptr : itemOf(key));
}

void TreeView::pressed(MouseButton button, Point point) {
    const std::wstring key = nodeAt(point);
    if (!key.empty()) select(key);
    UINT place = 0;
    HTREEITEM item = hitTest(point, place);
    toggled_ = item && button == MouseButton::Left && (place & TVHT_ONITEMBUTTON);
    if (toggled_) send(TVM_EXPAND, TVE_TOGGLE, item);
    if (onMouseDown) onMouseDown(button, point);
}

void TreeView::released(MouseButton button, Point point) {
    if (button == MouseButton::Left) {
        if (onClick) onClick(nodeAt(point));
    } else if (onContextMenu && !selectedKey().empty()) {
        onContextMenu(toScreen(point));
    }
}

void TreeView::doubleClicked(Point point) {
    if (toggled_) return;
    const std::wstring key = nodeAt(point);
    if (!key.empty()) send(TVM_EXPAND, TVE_TOGGLE, itemOf(key));
    if (onDoubleClick) onDoubleClick();
}

bool TreeView::dragged(Point from) {
    const std::wstring key = nodeAt(from);
    return !key.empty() && !toggled_ && onBeginDrag && onBeginDrag(key);
}

std::optional<LRESULT> TreeView::onMessage(UINT message, WPARAM wparam, LPARAM lparam) {
    if (deaf_ && message != WM_GETDLGCODE) return answerDeaf(message, wparam, lparam);
    switch (message) {
        case WM_GETDLGCODE:  // else Enter would go to the form
            if (wparam == VK_RETURN && onKeyDown)
                return defaultProcedure(message, wparam, lparam) | DLGC_WANTMESSAGE;
            return std::nullopt;
        case WM_KEYDOWN:  // the star opens no more than the plus: all below may be a whole disk
            return ItemView::onMessage(message, wparam == VK_MULTIPLY ? VK_ADD : wparam, lparam);
        case WM_SYSKEYDOWN:  // Wine's tree keeps Shift+F10 to itself
            return DefWindowProcW(handle(), message, wparam, lparam);
        default:
            return ItemView::onMessage(message, wparam, lparam);
    }
}

std::optional<Point> TreeView::menuPlace() {
    const std::wstring key = selectedKey();
    if (key.empty()) return std::nullopt;
    ensureVisible(key);
    const Rect area = nodeArea(key);
    return Point{area.x + area.width / 2, area.bottom()};
}

std::optional<LRESULT> TreeView::onNotify(NMHDR& header) {
    switch (header.code) {
        case NM_CUSTOMDRAW:
            return customDraw(reinterpret_cast<NMTVCUSTOMDRAW&>(header));
        case TVN_DELETEITEMW: {
            const LPARAM node = reinterpret_cast<const NMTREEVIEWW&>(header).itemOld.lParam;
            Nodes& nodes = emptying_ ? doomed_ : nodes_;
            nodes.erase(nodes.find(reinterpret_cast<const Nodes::value_type*>(node)->first));
            deaf_ = emptying_;
            if (deaf_) emptying_->next();
            deaf_ = false;
            return 0;
        }
        case TVN_ITEMEXPANDEDW: {
            const auto& change = reinterpret_cast<NMTREEVIEWW&>(header);
            const std::wstring key = keyOf(change.itemNew.hItem);
            if (change.action == TVE_EXPAND && !key.empty() && onExpand) onExpand(key);
            return 0;
        }
        default:
            return std::nullopt;
    }
}

LRESULT TreeView::customDraw(NMTVCUSTOMDRAW& draw) const {
    if (draw.nmcd.dwDrawStage == CDDS_PREPAINT) return CDRF_NOTIFYITEMDRAW;
    if (draw.nmcd.dwDrawStage != CDDS_ITEMPREPAINT) return CDRF_DODEFAULT;
    const auto* node = reinterpret_cast<const Nodes::value_type*>(draw.nmcd.lItemlParam);
    const bool marked =
        draw.nmcd.uItemState & CDIS_SELECTED ||
        related(nullptr, TVGN_DROPHILITE) == reinterpret_cast<HTREEITEM>(draw.nmcd.dwItemSpec);
    if (node && !marked) {
        draw.clrText = shownText(node->second.foreground);
        draw.clrTextBk = colors().field;
    } else if (node && !hasFocus()) {  // still to be seen when the focus is elsewhere
        const RowColors row = rowColors(node->second.foreground, RowState::SelectedElsewhere);
        draw.clrText = row.text;
        draw.clrTextBk = row.ground;
    }
    return CDRF_NEWFONT;
}

}  // namespace tunovka
