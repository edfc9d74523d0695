#include "editor/editor_view.h"

#include "core/file_system.h"
#include "editor/texts.h"
#include "playlist/resolve.h"
#include "ui/form.h"

namespace tunovka {
namespace {

ListItem row(const EditorEntry& entry) {
    const MultiMedialny::SkinPalette& colors = MultiMedialny::palette();
    return {.key = entry.key,
            .text = entry.name(),
            .foreground = entry.missing ? colors.MissingEntryColor : colors.NodeForeColor};
}

}  // namespace

EditorView::EditorView(Form& form, const EditorDocument& document)
    : lblpočet({.name = L"lblpočet", .caption = std::wstring(kInitialCountLabel), .parent = &form}),
      lblplejlist(
          {.name = L"lblplejlist", .caption = L"", .parent = &form, .format = DT_PATH_ELLIPSIS}),
      lblbar({.name = L"lblbar",
              .caption = L"",
              .parent = &form,
              .format = DT_PATH_ELLIPSIS,
              .status = true}),
      Lview({.name = L"Lview", .text = L"Položky playlistu", .parent = &form}),
      scroller(form, Lview, rowsPerPageCut),
      document_(document) {}

void EditorView::showRows() {
    std::vector<ListItem> rows;
    rows.reserve(document_.entries().size());
    for (const EditorEntry& entry : document_.entries()) rows.push_back(row(entry));
    Lview.setAll(std::move(rows));
    updateCountLabel();
}

void EditorView::showAdded(std::size_t position) {
    Lview.insert(position, row(document_.entries().at(position)));
    updateCountLabel();
}

void EditorView::showRemoved(std::size_t position) {
    Lview.removeAt(position);
    updateCountLabel();
}

void EditorView::showMoved(std::size_t from, std::size_t to) {
    Lview.move(from, to);
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
