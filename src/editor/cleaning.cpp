// Commands that take rows out of an editor's list or bring them into another order.

#include "core/text.h"
#include "editor/editor.h"
#include "editor/texts.h"
#include "ui/box.h"

namespace tunovka {
namespace {

void showFromTop(Editor& editor) {
    yieldToEvents();  // what the document did in one piece is over
    if (editor.form.isClosing()) return;
    editor.view.showRows();
    editor.view.select(0);
}

void removeRows(Editor& editor, const std::vector<std::wstring>& keys) {
    editor.document.remove(keys);
    showFromTop(editor);
}

}  // namespace

void removeCurrent(Editor& editor) {
    const auto position = editor.view.Lview.selected();
    if (!position || !editor.document.removeAt(*position)) return;
    editor.view.showRemoved(*position);
    const std::size_t left = editor.document.entries().size();
    editor.view.select(left == 0 ? 0 : std::min(*position, left - 1));
}

void removeDuplicates(Editor& editor) {
    const auto keys = editor.document.duplicates(editor.files.anew(), editor.hooks());
    if (!keys) return;
    const bool agreed = ask(duplicatesBox(keys->size())) == 1;
    if (agreed && !keys->empty() && !editor.form.isClosing()) removeRows(editor, *keys);
}

std::optional<std::size_t> dropInvalidLinks(Editor& editor) {
    const auto keys = editor.document.invalidLinks(editor.files.anew(), editor.hooks());
    if (!keys) return std::nullopt;
    if (!keys->empty()) removeRows(editor, *keys);
    return keys->size();
}

void removeInvalidLinks(Editor& editor) {
    if (const auto removed = dropInvalidLinks(editor)) ask(invalidLinksNotice(*removed));
}

void sortRows(Editor& editor, SortOrder order) {
    if (editor.document.sort(order, sortKey, editor.hooks())) showFromTop(editor);
}

void restoreLoadOrder(Editor& editor) {
    editor.document.restoreLoadOrder(editor.files.anew(), editor.hooks());
    showFromTop(editor);
}

}  // namespace tunovka
