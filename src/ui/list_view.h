#pragma once

#include <windows.h>

#include <commctrl.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "core/handle.h"
#include "ui/item_mouse.h"
#include "ui/list_items.h"
#include "ui/window.h"

namespace tunovka {

// The system's report list with one column over rows of its own (see ListItems for keys, sorting
// and errors). The system asks only for the rows in view, so that tens of thousands stay
// immediate. It scrolls by wheel and keyboard and shows no scroll bar: a picture scroll bar stands
// beside it. Positions count from 0. Anything that lets events run may remove rows: look up by key
// again afterwards.
class ListView : public Window {
  public:
    struct ListArgs {
        std::wstring name;
        std::wstring text;  // the accessible name
        Window* parent;
        std::wstring header;  // caption of the column, "" for none
        bool visible = true;
    };

    explicit ListView(const ListArgs& args);

    // The content. The selection stays with its row, and the view where it is.
    void add(ListItem item);
    void insert(std::size_t position, ListItem item);
    void addAll(std::vector<ListItem> items);
    void setAll(std::vector<ListItem> items);
    void removeAt(std::size_t position);
    std::size_t remove(const std::vector<std::wstring>& keys);
    void clear();
    void rename(const std::wstring& key, const std::wstring& newKey, const std::wstring& text);
    void setForeground(std::size_t position, Color color);
    void move(std::size_t from, std::size_t to);
    void sort(SortOrder order);

    const ListItems& items() const { return items_; }
    std::size_t count() const { return items_.count(); }
    std::optional<std::size_t> find(const std::wstring& key) const { return items_.find(key); }

    // Selecting gives the row the keyboard's place too; it scrolls nothing.
    void select(std::size_t position);
    std::optional<std::size_t> selected() const;
    std::wstring selectedKey() const;  // "" without a selection or of a row without a key

    std::size_t firstVisible() const;          // 0 for an empty list
    void ensureVisible(std::size_t position);  // scrolls just enough to show the row whole
    std::optional<std::size_t> itemAt(Point point) const;
    double rowHeight() const;   // pixels; 0 while the list is empty
    double rowsInView() const;  // height of the rows' area in rows, with its fraction; 0 likewise

    // Scrolls as the mouse wheel does; away from the person is positive.
    void turnWheel(int notches);
    // Takes the fonts and row height of its screen, after the dpi has changed.
    void applyScale();

    // Marks the row under a drag; nullopt marks none.
    void setDropHighlight(std::optional<std::size_t> position);
    std::optional<std::size_t> dropHighlight() const { return dropHighlight_; }
    // Scrolls by a row when a drag's pointer is near the upper or lower edge.
    void scrollNearEdge(Point point);

    // Tells the system of changed rows once, at its end.
    class Batch {
      public:
        explicit Batch(ListView& list);
        ~Batch();
        Batch(const Batch&) = delete;
        Batch& operator=(const Batch&) = delete;

      private:
        ListView& list_;
    };

    std::function<void(MouseButton, Point)> onMouseDown;  // the row under it is selected already
    std::function<void(MouseButton, Point)> onMouseUp;
    std::function<void()> onItemClick;       // left button, on a row, which is the selected one
    std::function<void()> onDoubleClick;     // on a row
    std::function<void()> onSelectionByKey;  // the selection moved by the keyboard
    std::function<void(std::size_t position)> onBeginDrag;
    std::function<bool(WORD key)> onKeyDown;          // true when used up
    std::function<void(Point screen)> onContextMenu;  // asked by the keyboard
    std::function<void()> onScroll;  // the first row in view changed by wheel, key or drag

  protected:
    std::optional<LRESULT> onMessage(UINT message, WPARAM wparam, LPARAM lparam) override;
    std::optional<LRESULT> onNotify(NMHDR& header) override;

  private:
    void pressed(MouseButton button, Point point);
    void sync();
    void setSelected(std::size_t position, bool isSelected);
    LRESULT byKeyboard(UINT message, WPARAM wparam, LPARAM lparam);
    LRESULT scrolled(UINT message, WPARAM wparam, LPARAM lparam);
    HWND header() const;
    int headerHeight() const;
    Rect rowArea(std::size_t position) const;
    void keyboardMenu();
    void tellText(NMLVDISPINFOW& info) const;
    LRESULT customDraw(const NMLVCUSTOMDRAW& draw) const;
    void drawRow(HDC dc, std::size_t position) const;
    LRESULT drawHeader(const NMCUSTOMDRAW& draw) const;

    ListItems items_;
    ItemMouse mouse_;
    std::optional<std::size_t> dropHighlight_;
    DWORD lastEdgeScroll_ = 0;
    Font headerFont_;
    int scale_ = 0;  // dpi that font and pictures are made for
    int batches_ = 0;
};

}  // namespace tunovka
