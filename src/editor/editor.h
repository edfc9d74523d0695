#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "core/existing_files.h"
#include "editor/document.h"
#include "ui/box_request.h"
#include "ui/drag_drop.h"
#include "ui/form.h"
#include "ui/program_links.h"

namespace tunovka {

// The commands of an editor window over its document: what they read, ask and write. Whoever calls
// one has marked the form as busy: it may let events run, and the form may have been closed when it
// returns.
class Editor {
  public:
    Editor(Form& form, ProgramLinks& links) : form_(form), links_(links) {}

    EditorDocument document;

    // A row is to be selected and shown as if it had been clicked; past the end: none.
    std::function<void(std::size_t row)> onSelect;

    // The file of a row, "" when it is missing now.
    std::wstring pathOf(std::size_t row) const;
    // Why there is none: `missing`, or what stands against looking.
    std::wstring whyNoFile(std::size_t row, std::wstring_view missing) const;
    // What the status line says of it: the path, or why there is none.
    std::wstring status(std::size_t row) const;

    // Reads a playlist. What was read before an error stays.
    void loadPlaylistFile(const std::wstring& path);

    // A text was dropped on the list: over the row at `target`, or beside the rows.
    void drop(const std::wstring& text, std::optional<std::size_t> target, const DragState& drag);

    void removeAt(std::size_t row);
    void removeDuplicates();
    void removeInvalidLinks();
    // The same without its report; returns how many there were, nullopt when it was cancelled.
    std::optional<std::size_t> dropInvalidLinks();
    void sort(SortOrder order);
    void restoreLoadOrder();

    // Asks for a file and writes the list into it.
    void saveAs();
    // Writes the files that exist, in display order. An old playlist is replaced when the new
    // content is whole. A failure leaves it and the changed flag as they were and raises its error.
    // False when the window was closed meanwhile.
    bool write(const std::wstring& target, bool relative);

  private:
    LoopHooks hooks() const;
    // A file's content; empty when the command was given up.
    std::optional<std::wstring> read(const std::wstring& path) const;
    // Which rows have a file now; empty when the command was given up.
    std::optional<std::vector<bool>> filesOfRows();
    bool agrees(const BoxRequest& question) const;
    void notify(const BoxRequest& notice) const;
    void move(const std::wstring& key, std::optional<std::size_t> target);
    void addFile(const std::wstring& path);
    void mergeDroppedPlaylist(const std::wstring& path);
    void selectLast() const;
    void selectFirst() const;
    std::wstring askTarget() const;

    Form& form_;
    ProgramLinks& links_;
    ExistingFiles files_;
};

}  // namespace tunovka
