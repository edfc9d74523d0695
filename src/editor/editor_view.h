#pragma once

#include "editor/document.h"
#include "ui/image_scroller.h"
#include "ui/label.h"
#include "ui/list_view.h"

namespace tunovka {

// The part of an editor window that shows the document: the list with its picture scroll bar, the
// count label and the status line. The list shows what the document tells.
class EditorView {
  public:
    EditorView(Form& form, EditorDocument& document);

    // Selects a row as if it had been clicked and scrolls just enough to show it; a position past
    // the end selects nothing.
    void select(std::size_t position);
    // What a click on the selected row does: the status line names its file, the thumb follows.
    void itemClicked();

    // The file of the selected row, "" when it is missing now or nothing is selected.
    std::wstring selectedPath() const;

    Label lblpočet, lblplejlist, lblbar;
    ListView Lview;
    ImageScroller scroller;

  private:
    void updateCountLabel();

    const EditorDocument& document_;
};

}  // namespace tunovka
