#pragma once

#include <functional>
#include <string>
#include <unordered_map>
#include <vector>

#include "core/loop.h"
#include "ui/item_view.h"
#include "ui/skin.h"
#include "ui/window.h"

namespace tunovka {

// The system's tree with nodes known by unique, non-empty keys. A key that is asked for must be
// there; adding one that is there already raises kKeyNotUnique. "" as a parent is the root.
class TreeView : public ItemView {
  public:
    struct NodeArgs {
        std::wstring parentKey;
        std::wstring key;
        std::wstring text;
        std::wstring imageKey;
        std::wstring tag;  // what its owner keeps with it
        Color foreground = MultiMedialny::palette().NodeForeColor;
        bool bold = false;
    };

    TreeView(const wchar_t* name, const std::wstring& accessibleName, Window& parent);

    void add(const NodeArgs& node);
    void remove(const std::wstring& key) { send(TVM_DELETEITEM, 0, itemOf(key)); }
    void clear(const LoopHooks& hooks = {});
    // Gives a node another key in place, and another text, which is its tag as well.
    void rename(const std::wstring& key, const std::wstring& newKey, const std::wstring& text);

    bool contains(const std::wstring& key) const { return nodes_.contains(key); }
    std::wstring text(const std::wstring& key) const;
    std::wstring tag(const std::wstring& key) const { return nodes_.at(key).tag; }

    std::wstring selectedKey() const override { return keyOf(related(nullptr, TVGN_CARET)); }
    // "" where there is none.
    std::wstring firstRoot() const { return keyOf(related(nullptr, TVGN_ROOT)); }
    std::wstring firstChild(const std::wstring& key) const {
        return keyOf(related(itemOf(key), TVGN_CHILD));
    }
    std::wstring nodeAt(Point point) const;
    // Area of a node's text in pixels; empty when it is not in view.
    Rect nodeArea(const std::wstring& key) const;

    void select(const std::wstring& key) { send(TVM_SELECTITEM, TVGN_CARET, itemOf(key)); }
    void expand(const std::wstring& key) { send(TVM_EXPAND, TVE_EXPAND, itemOf(key)); }
    void sortChildren(const std::wstring& key) { send(TVM_SORTCHILDREN, 0, itemOf(key)); }
    void ensureVisible(const std::wstring& key) { send(TVM_ENSUREVISIBLE, 0, itemOf(key)); }

    // Marks the node under a drag; "" marks none.
    void setDropHighlight(const std::wstring& key);

    std::function<void(const std::wstring& key)> onClick;      // by the left button; "" for no node
    std::function<void(const std::wstring& key)> onExpand;     // by a person or expand()
    std::function<bool(const std::wstring& key)> onBeginDrag;  // false when nothing is dragged

    // Asked by tests and benchmarks alone.
    std::size_t count() const { return nodes_.size(); }
    Color foreground(const std::wstring& key) const { return nodes_.at(key).foreground; }
    std::wstring nextSibling(const std::wstring& key) const {
        return keyOf(related(itemOf(key), TVGN_NEXT));
    }
    std::wstring dropHighlight() const { return keyOf(related(nullptr, TVGN_DROPHILITE)); }

  protected:
    std::optional<LRESULT> onMessage(UINT message, WPARAM wparam, LPARAM lparam) override;
    std::optional<LRESULT> onNotify(NMHDR& header) override;

  private:
    struct Node {
        HTREEITEM item;
        Color foreground;
        std::wstring tag;
    };
    // By key; the system's items hold the addresses of the entries.
    using Nodes = std::unordered_map<std::wstring, Node>;
    HTREEITEM itemOf(const std::wstring& key) const { return nodes_.at(key).item; }
    std::wstring keyOf(HTREEITEM item) const;
    HTREEITEM related(HTREEITEM item, UINT relation) const;
    void measureSome();
    LRESULT answerDeaf(UINT message, WPARAM wparam, LPARAM lparam);
    void fillImageList();
    HTREEITEM hitTest(Point point, UINT& place) const;
    void prepare() override;
    void onFont() override;
    int imageOf(const std::wstring& pictureKey);
    void pressed(MouseButton button, Point point) override;
    void released(MouseButton button, Point point) override;
    void doubleClicked(Point point) override;
    bool dragged(Point from) override;
    std::optional<Point> menuPlace() override;
    LRESULT customDraw(NMTVCUSTOMDRAW& draw) const;

    Nodes nodes_, doomed_;  // whose items go with all others
    ImageList Ilist_;
    std::vector<std::wstring> pictures_;  // in Ilist_, by their keys
    const LoopHooks* emptying_ = nullptr;
    bool deaf_ = false;
    std::vector<MSG> toldMeanwhile_;  // to a deaf tree
    bool toggled_ = false;            // the press opened or closed a node: no drag, no double click
};

}  // namespace tunovka
