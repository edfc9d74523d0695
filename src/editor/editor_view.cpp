#include "editor/editor_view.h"

#include "core/file_system.h"
#include "editor/texts.h"
#include "playlist/resolve.h"
#include "ui/form.h"

namespace tunovka {
EditorView::EditorView(Form& form, EditorDocument& document)
    : lblpočet({.name = L"lblpočet", .caption = std::wstring(kInitialCountLabel), .parent = &form}),
      lblplejlist(
          {.name = L"lblplejlist", .caption = L"", .parent = &form, .format = DT_PATH_ELLIPSIS}),
      lblbar({.name = L"lblbar",
              .caption = L"",
              .parent = &form,
              .format = DT_PATH_ELLIPSIS,
              .status = true}),
      Lview({.name = L"Lview", .text = L"Položky playlistu", .parent = &form}, document),
      scroller(form, Lview, rowsPerPageCut),
      document_(document) {
    Lview.onRowsChange = [this] { updateCountLabel(); };
}

void EditorView::select(std::size_t position) {
    if (position < Lview.count()) {
        Lview.select(position);
        Lview.ensureVisible(position);
    }
    itemClicked();
}

void EditorView::itemClicked() {
    if (!Lview.selected()) return lblbar.setText(L"");
    const std::wstring path = selectedPath();
    lblbar.setText(path.empty() ? std::wstring(kMissingFileStatus) : path);
    scroller.followSelection();
}

void EditorView::updateCountLabel() {
    lblpočet.setText(countLabel(Lview.count()));
    scroller.refresh();
}

std::wstring EditorView::selectedPath() const {
    if (!Lview.selected()) return {};
    return resolveEntryPath(Lview.selectedKey(), document_.folder(), FileSystemObject::FileExists);
}

}  // namespace tunovka
