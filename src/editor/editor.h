#pragma once

#include "core/existing_files.h"
#include "core/loop.h"
#include "editor/document.h"
#include "editor/editor_view.h"
#include "ui/drag_drop.h"
#include "ui/form.h"
#include "ui/program_links.h"

namespace tunovka {

// What the commands of an editor window work on. Each command below and in the neighbouring files
// expects that its caller has marked the form as busy: it may let events run, and the form may have
// been closed when it returns.
struct Editor {
    Editor(Form& window, ProgramLinks& program)
        : form(window), links(program), view(window, document) {}

    // For loops that walk over the document: events run, closing the window ends the loop.
    LoopHooks hooks() const {
        return {[] { yieldToEvents(); }, [this] { return form.isClosing(); }};
    }

    Form& form;
    ProgramLinks& links;
    EditorDocument document;
    EditorView view;
    ExistingFiles files;  // each command that tests files starts it anew
};

// Reads a playlist into an editor. What was read before an error is shown.
void loadPlaylistFile(Editor& editor, const std::wstring& path);

// A text was dropped on the list: over the row at `target`, or beside the rows.
void dropText(Editor& editor, const std::wstring& text, std::optional<std::size_t> target,
              const DragState& drag);

void removeCurrent(Editor& editor);
void removeDuplicates(Editor& editor);
void removeInvalidLinks(Editor& editor);
// The same without its report; returns how many rows it were, nullopt when it was cancelled.
std::optional<std::size_t> dropInvalidLinks(Editor& editor);
void sortRows(Editor& editor, SortOrder order);
void restoreLoadOrder(Editor& editor);

// Asks for a file and writes the list into it.
void saveAs(Editor& editor);
// Writes the files that exist, in display order. A failure leaves the changed flag as it was and
// raises its error. False when the window was closed meanwhile.
bool writeList(Editor& editor, const std::wstring& target, bool relative);
// Writes a playlist of these files; an old one is replaced when the new content is whole, and stays
// as it was when that fails or when `hooks` cancel it (false).
bool writePlaylistFile(const std::wstring& target, const std::vector<std::wstring>& entryPaths,
                       bool relative, const LoopHooks& hooks);

}  // namespace tunovka
