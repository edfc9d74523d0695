// Commands that take rows out of an editor's list or bring them into another order.

#include "core/existing_files.h"
#include "core/text.h"
#include "editor/editor.h"
#include "editor/texts.h"
#include "ui/box.h"

namespace tunovka {
namespace {

void removeRows(Editor& editor, const std::vector<std::wstring>& keys) {
    editor.document.remove(keys);
    editor.view.showRows();
    editor.view.select(0);
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
    ExistingFiles existing;
    const auto keys = editor.document.duplicates(
        [&](const std::wstring& path) { return existing.contains(path); }, editor.hooks());
    if (!keys) return;
    const bool agreed = ask(duplicatesBox(keys->size())) == 1;
    if (agreed && !keys->empty() && !editor.form.isClosing()) removeRows(editor, *keys);
}

void removeInvalidLinks(Editor& editor) {
    ExistingFiles existing;
    const auto keys = editor.document.invalidLinks(
        [&](const std::wstring& path) { return existing.contains(path); }, editor.hooks());
    if (!keys) return;
    if (!keys->empty()) removeRows(editor, *keys);
    ask(invalidLinksNotice(keys->size()));
}

void sortRows(Editor& editor, SortOrder order) {
    if (!editor.document.sort(order, sortKey, editor.hooks())) return;
    editor.view.showRows();
    editor.view.select(0);
}

void restoreLoadOrder(Editor& editor) {
    ExistingFiles existing;
    editor.document.restoreLoadOrder(
        [&](const std::wstring& path) { return existing.contains(path); }, editor.hooks());
    if (editor.form.isClosing()) return;
    editor.view.showRows();
    editor.view.select(0);
}

}  // namespace tunovka
