#pragma once

#include "editor/editor.h"
#include "ui/drag_drop.h"
#include "ui/form.h"
#include "ui/image.h"
#include "ui/picture_box.h"
#include "ui/popup_menu.h"
#include "ui/program_links.h"
#include "ui/text_box.h"

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

    // A text was dropped on the list: over the row at `target`, or beside the rows.
    void Lview_Drop(const std::wstring& text, std::optional<std::size_t> target,
                    const DragState& drag);

    TitleStrip PicZahlavie;
    Image IZavri;
    PopupMenu menu1;

    Editor editor;

  protected:
    bool queryUnload() override;
    void onAccept() override;
    void onLayout() override;
    void onPaintGround(HDC dc, const RECT& area) const override;

  private:
    void bindMenu();
    void bindList();
    void run(const std::function<void(Editor&)>& command);

    void txtodkaz_Change();
    bool dragOver(Point point);
    void Lview_BeginDrag();
    void prepareMenu();
    void showMenu(Point screen);
    void prehrat();
    void info_o_subore();

    TextDropTarget drops_;
    bool asking_ = false;  // the close prompt is open
};

}  // namespace tunovka
