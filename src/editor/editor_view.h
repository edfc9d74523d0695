#pragma once

#include "editor/document.h"
#include "ui/image_scroller.h"
#include "ui/label.h"
#include "ui/list_view.h"

namespace tunovka {

// The part of an editor window that shows the document: the list with its picture scroll bar, the
// count label and the status line. The list holds a copy of the rows, which stays as it is while a
// long command works on the document.
class EditorView {
  public:
    EditorView(Form& form, const EditorDocument& document);

    // Shows the document's rows, none of them selected.
    void showRows();
    // Shows one row that the document has just got at this position.
    void showAdded(std::size_t position);
    void showRemoved(std::size_t position);
    void showMoved(std::size_t from, std::size_t to);

    // Selects a row as if it had been clicked and scrolls just enough to show it; a position past
    // the end selects nothing.
    void select(std::size_t position);
    // What a click on the selected row does: the status line names its file, the thumb follows.
    void itemClicked();

    // The count, and the scroll bar for it. Called after every change of the list.
    void updateCountLabel();

    // The file of the selected row, "" when it is missing now or nothing is selected.
    std::wstring selectedPath() const;

    Label lblpočet, lblplejlist, lblbar;
    ListView Lview;
    ImageScroller scroller;

  private:
    const EditorDocument& document_;
};

}  // namespace tunovka
