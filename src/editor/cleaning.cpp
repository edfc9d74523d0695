// Commands that take rows out of an editor's list or bring them into another order.

#include "editor/editor.h"
#include "editor/texts.h"
#include "ui/box.h"

namespace tunovka {
namespace {

void selectFirst(Editor& editor) {
    yieldToEvents();  // what the document did in one piece is over
    if (!editor.form.isClosing()) editor.view.select(0);
}

}  // namespace

void removeCurrent(Editor& editor) {
    const auto position = editor.view.Lview.selected();
    if (!position || !editor.document.removeAt(*position)) return;
    const std::size_t left = editor.document.count();
    editor.view.select(left == 0 ? 0 : std::min(*position, left - 1));
}

void removeDuplicates(Editor& editor) {
    const auto keys = editor.document.duplicates(editor.files.anew(), editor.hooks());
    if (!keys) return;
    const bool agreed = ask(duplicatesBox(keys->size())) == 1;
    if (agreed && !editor.form.isClosing() && editor.document.remove(*keys) > 0)
        selectFirst(editor);
}

std::optional<std::size_t> dropInvalidLinks(Editor& editor) {
    const auto keys = editor.document.invalidLinks(editor.files.anew(), editor.hooks());
    if (!keys) return std::nullopt;
    if (editor.document.remove(*keys) > 0) selectFirst(editor);
    return keys->size();
}

void removeInvalidLinks(Editor& editor) {
    if (const auto removed = dropInvalidLinks(editor)) ask(invalidLinksNotice(*removed));
}

void sortRows(Editor& editor, SortOrder order) {
    if (editor.document.sort(order, editor.hooks())) selectFirst(editor);
}

void restoreLoadOrder(Editor& editor) {
    editor.document.restoreLoadOrder(editor.files.anew(), editor.hooks());
    selectFirst(editor);
}

}  // namespace tunovka
