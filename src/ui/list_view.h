#pragma once

#include <windows.h>

#include <commctrl.h>

#include <functional>
#include <optional>
#include <string>

#include "core/handle.h"
#include "ui/item_view.h"
#include "ui/list_model.h"
#include "ui/window.h"

namespace tunovka {

// The system's report list with one column over a model, of which it asks only for the rows in
// view; after a change the selection stays with its row and the view where it is. A picture scroll
// bar stands beside it. Anything that lets events run may remove rows: look up by key again
// afterwards.
class ListView : public ItemView {
  public:
    struct ListArgs {
        const wchar_t* name;
        std::wstring text;  // the accessible name
        Window* parent;
        std::wstring header;  // caption of the column, "" for none
        bool visible = true;
    };

    ListView(const ListArgs& args, ListModel& model);
    ~ListView() override;

    std::size_t count() const { return shown_; }  // without what the model has not told yet

    // Selecting gives the row the keyboard's place too; it scrolls nothing.
    void select(std::size_t position);
    std::optional<std::size_t> selected() const;
    std::wstring selectedKey() const override;

    // 0 for an empty list.
    std::size_t firstVisible() const { return send(LVM_GETTOPINDEX); }
    // Scrolls just enough to show the row whole.
    void ensureVisible(std::size_t position) { send(LVM_ENSUREVISIBLE, position); }
    std::optional<std::size_t> itemAt(Point point) const;
    // Pixels; 0 while the list is empty.
    double rowHeight() const { return shown_ > 0 ? rowArea(0).height : 0; }
    double rowsInView() const;  // height of the rows' area in rows, with its fraction; 0 likewise

    // Scrolls as the mouse wheel does, by 120ths of a notch; away from the person is positive.
    void turnWheel(int turn);

    // Marks the row under a drag; nullopt marks none.
    void setDropHighlight(std::optional<std::size_t> position);
    std::optional<std::size_t> dropHighlight() const { return dropHighlight_; }

    std::function<void(std::size_t position)> onBeginDrag;
    std::function<void()> onRowsChange;  // after the model has told of a change
    std::function<void()> onScroll;      // the first row in view changed by wheel, key or drag

  protected:
    std::optional<LRESULT> onMessage(UINT message, WPARAM wparam, LPARAM lparam) override;
    std::optional<LRESULT> onNotify(NMHDR& header) override;

  private:
    void prepare() override;
    void onFont() override;
    void pressed(MouseButton button, Point point) override;
    void doubleClicked(Point point) override;
    bool dragged(Point from) override;
    std::optional<Point> menuPlace() override;
    int itemsTop() const override;
    LRESULT answerOfSystem(UINT message, WPARAM wparam, LPARAM lparam) override;
    void show(const ListChange& change);
    void setSelected(std::size_t position, bool isSelected);
    HWND header() const;
    Rect rowArea(std::size_t position) const;
    LRESULT drawRow(const NMCUSTOMDRAW& draw) const;
    LRESULT drawHeader(const NMCUSTOMDRAW& draw) const;

    ListModel& model_;
    std::wstring caption_;  // of the column
    std::size_t shown_ = 0;
    std::optional<std::size_t> dropHighlight_;
    int turned_ = 0;  // 120ths of a row that the wheel was turned and the list not scrolled yet
    Font headerFont_;
};

}  // namespace tunovka
