#pragma once

#include "editor/editor.h"
#include "ui/form.h"
#include "ui/image_scroller.h"
#include "ui/label.h"
#include "ui/list_view.h"
#include "ui/popup_menu.h"
#include "ui/program_links.h"

namespace tunovka {

// A playlist editor. Any number of them are open at once, each with a number of its own that its
// title and its tag show.
class frmplejlist : public Form {
  public:
    explicit frmplejlist(ProgramLinks& links);

    // Opens a new editor on what the text names. A playlist of which nothing could be read leaves
    // no window behind; the error is raised in any case.
    static void open(ProgramLinks& links, const std::wstring& command);

    // Gives the editor its content: a playlist's path, or "nový playlist…". Errors of reading are
    // raised.
    TextBox txtodkaz;

    Editor editor;
    Label lblpočet;     // how many entries there are
    Label lblplejlist;  // the playlist's path
    Label lblbar;       // path of the selected entry
    ListView Lview;
    ImageScroller scroller;
    PopupMenu menu1;

    // Selects a row as if it had been clicked and scrolls just enough to show it; a position past
    // the end selects nothing.
    void select(std::size_t position);

    // A text was dropped on the list: over the row at `target`, or beside the rows.
    void Lview_OLEDragDrop(const std::wstring& text, std::optional<std::size_t> target,
                           const DragState& drag);

  protected:
    bool queryUnload() override;
    std::wstring sessionBlock() const override;
    void onAccept() override;
    Size arrange(int stripBottom) override;

  private:
    void bindHandlers();
    void run(const std::function<void(Editor&)>& command);
    std::wstring selectedPath() const;
    std::optional<std::wstring> fileToUse() const;
    void updateCountLabel();
    void showMenu(Point screen);

    void txtodkaz_Change();
    void Lview_ItemClick();
    void Lview_MouseDown(Point at);
    bool Lview_KeyDown(WORD key);
    void Lview_OLEStartDrag();
    bool Lview_OLEDragOver(Point at);
    void prehrat_Click();
    void info_o_subore_Click();
    void odstranit_polozku_Click();

    ProgramLinks& links_;
    TextDropTarget drops_;
    std::optional<std::size_t> dropRow_;  // that a drag last showed as its target
    bool asking_ = false;                 // the close prompt is open
};

}  // namespace tunovka
