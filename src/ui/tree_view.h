#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "ui/item_mouse.h"
#include "ui/skin.h"
#include "ui/window.h"

namespace tunovka {

// The system's tree with nodes that are known by unique, non-empty keys (compared exactly). An
// unknown key raises kElementNotFound, a key that is there already kKeyNotUnique; "" as a parent is
// the root. Anything that lets events run may remove nodes: look up by key again afterwards.
class TreeView : public Window {
  public:
    struct TreeArgs {
        std::wstring name;
        std::wstring text;  // the accessible name
        Window* parent;
        bool putOff = false;  // created by createNow()
    };
    struct NodeArgs {
        std::wstring parentKey;
        std::wstring key;
        std::wstring text;
        std::wstring imageKey;  // "" for no picture
        Color foreground = MultiMedialny::palette().NodeForeColor;
        bool bold = false;
    };

    explicit TreeView(const TreeArgs& args);
    ~TreeView() override;

    void setImages(ImageList images);
    // The picture of nodes that are added without one of their own.
    void setDefaultImage(const std::wstring& imageKey);

    void add(const NodeArgs& node);
    void remove(const std::wstring& key);
    void clear();
    // Gives a node another key and text in place.
    void rename(const std::wstring& key, const std::wstring& newKey, const std::wstring& text);

    bool contains(const std::wstring& key) const { return nodes_.contains(key); }
    std::wstring text(const std::wstring& key) const;

    // "" where there is none.
    std::wstring selectedKey() const;
    std::wstring firstRoot() const;
    std::wstring firstChild(const std::wstring& key) const;
    std::wstring nodeAt(Point point) const;
    // Area of a node's text in pixels; empty when it is not in view.
    Rect nodeArea(const std::wstring& key) const;

    void select(const std::wstring& key);
    void expand(const std::wstring& key);
    void sortChildren(const std::wstring& key);
    void ensureVisible(const std::wstring& key);

    // Marks the node under a drag; "" marks none.
    void setDropHighlight(const std::wstring& key);
    // Scrolls by a line when a drag's pointer is near the upper or lower edge.
    void scrollNearEdge(Point point);

    // Keeps the tree from painting while it is filled.
    class RedrawOff {
      public:
        explicit RedrawOff(TreeView& tree);
        ~RedrawOff();
        RedrawOff(const RedrawOff&) = delete;
        RedrawOff& operator=(const RedrawOff&) = delete;

      private:
        TreeView& tree_;
    };

    std::function<void(MouseButton, Point)> onMouseDown;  // the node under it is selected already
    std::function<void(MouseButton, Point)> onMouseUp;
    std::function<void()> onClick;                             // anywhere in the tree
    std::function<void(const std::wstring& key)> onNodeClick;  // after onClick
    std::function<void()> onDoubleClick;                       // anywhere but on a node's button
    std::function<void(const std::wstring& key)> onExpand;     // by a person or expand()
    std::function<void()> onSelectionByKey;  // the selection moved by the keyboard
    std::function<bool(const std::wstring& key)> onBeginDrag;  // false when nothing is dragged
    std::function<bool(WORD key)> onKeyDown;                   // true when used up
    std::function<void(Point screen)> onContextMenu;           // asked by the keyboard

    // Asked by tests and benchmarks alone.
    std::size_t count() const { return nodes_.size(); }
    Color foreground(const std::wstring& key) const { return at(key).foreground; }
    std::wstring nextSibling(const std::wstring& key) const;
    std::wstring dropHighlight() const;

  protected:
    std::optional<LRESULT> onMessage(UINT message, WPARAM wparam, LPARAM lparam) override;
    std::optional<LRESULT> onNotify(NMHDR& header) override;
    void onCreated() override;

  private:
    struct Node {
        std::wstring key;
        HTREEITEM item;
        Color foreground;
    };
    const Node& at(const std::wstring& key) const;
    HTREEITEM itemOf(const std::wstring& key) const;
    std::wstring keyOf(HTREEITEM item) const;
    Node* nodeOf(HTREEITEM item) const;
    HTREEITEM related(HTREEITEM item, UINT relation) const;
    void forget(HTREEITEM item);
    void pressed(MouseButton button, Point point);
    void released(MouseButton button, Point point);
    void doubleClicked(Point point);
    bool dragged(Point from);
    LRESULT customDraw(NMTVCUSTOMDRAW& draw) const;
    LRESULT byKeyboard(UINT message, WPARAM wparam, LPARAM lparam);
    void keyboardMenu();

    std::unordered_map<std::wstring_view, std::unique_ptr<Node>> nodes_;
    ImageList images_;
    int defaultImage_ = -1;
    ItemMouse mouse_;
    int redrawOff_ = 0;
    DWORD lastEdgeScroll_ = 0;
    bool byKeyboard_ = false;
    bool toggled_ = false;  // the press opened or closed a node: no drag, no double click
};

}  // namespace tunovka
