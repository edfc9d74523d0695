#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/file_questions.h"
#include "playlist/entry_key.h"
#include "ui/list_model.h"

namespace tunovka {

// One row of an editor's list.
struct PlaylistEntry {
    std::wstring key;      // holds number and text; "" for the row that says that nothing was found
    bool missing = false;  // no file was there when the row was made: shown in red

    std::wstring name() const;  // what the list shows
};

// How many entries came with a playlist, and how many of them lead to no file.
struct MergeReport {
    int added = 0;
    int invalid = 0;
};

// What a playlist editor holds, without its window: rows in display order, the load order list,
// the changed flag, the sort state and the numbers given so far. Its list view shows what a command
// has done when that is whole.
//
// Which files are there is passed in, as it was when the command began: questions to ask, or the
// answers for all rows in their order. Long commands let events run between rows, in which no other
// command may be given; the window sees to that. A command that is cancelled changes nothing.
class EditorDocument : public ListRows<PlaylistEntry> {
  public:
    ListRow row(std::size_t position) const override;

    // The entries in the order in which they were read or added, each by the number in its key,
    // which is never given twice. Removed rows stay in it until the order is restored.
    bool changed() const { return changed_; }

    // The playlist's path, or kNewPlaylist. Saving leaves it as it is.
    const std::wstring& playlistPath() const { return playlistPath_; }
    std::wstring folder() const;  // of the playlist, ending in "\"

    // False while a playlist is being read and after a reading that an error or a cancellation cut
    // short: saving would lose the rest. False also for one without an entry, until it gets one.
    bool mayBeSaved() const { return whole_ && !empty_; }

    // The path of the row's file, "" when it is missing now.
    std::wstring resolve(std::size_t position, const FileExistsTest& exists) const;

    // Drops all rows; the playlist of that path is about to be read.
    void clear(std::wstring_view path);

    // Starts with no rows. `text` is what the command channel received.
    void openNew(std::wstring_view text);

    // Reads the text of a playlist file; the rows so far are dropped. Without an entry line the
    // one row kNothingFound stands there. Past 32,767 entries kOverflow is raised and the rows
    // read so far stay.
    void load(std::wstring_view path, std::wstring_view text, FileQuestions& files,
              const LoopHooks& hooks = {});

    // True when a row's file is exactly this existing path. nullopt when cancelled. A row without a
    // key raises kInvalidCall.
    std::optional<bool> holds(const std::wstring& path, const LoopHooks& hooks = {}) const;

    // Adds a media file and returns its position. It is missing when its text, read like that of
    // every other entry, leads to no file. Raises kInvalidCall for a row without a key, kOverflow
    // when the numbers are used up.
    std::size_t add(const std::wstring& path, const FileExistsTest& exists);

    // Appends the entries of a dropped playlist. An error keeps the rows added so far, with the
    // changed flag set. nullopt when cancelled.
    std::optional<MergeReport> merge(std::wstring_view droppedPath, std::wstring_view text,
                                     FileQuestions& files, const LoopHooks& hooks = {});

    // Moves the row of that key to the position of another; the load order becomes the display
    // order. False when nothing changes: sorted, unknown key, own or no such position.
    bool move(std::wstring_view key, std::size_t to);

    void removeAt(std::size_t position);

    // Keys of the rows whose file an earlier row names as well. nullopt when cancelled.
    std::optional<std::vector<std::wstring>> duplicates(const std::vector<bool>& isThere,
                                                        const LoopHooks& hooks = {}) const;

    // Keys of the rows whose file is missing now.
    std::vector<std::wstring> invalidLinks(const std::vector<bool>& isThere) const;

    // Removes the rows of those keys, as far as they are still there; returns how many there were.
    std::size_t remove(const std::vector<std::wstring>& keys);

    // Sorts by name and keeps the list sorted until the load order is restored. Rows of equal
    // names stay in the order they have. A cancellation (false) leaves the rows as they were.
    using ListRows::sort;

    // Ends the sorting and puts the rows into the order of the load order list, which loses those
    // without a row.
    void restoreLoadOrder(const std::vector<bool>& isThere);

    // The paths of all rows in display order, missing files left out.
    std::vector<std::wstring> pathsToSave(const std::vector<bool>& isThere) const;

    void markSaved() { changed_ = false; }

  private:
    std::int16_t largestNumber() const;
    void appendEntries(std::int16_t number, std::vector<PlaylistEntry> entries);
    template <class EntryText>
    std::optional<MergeReport> appendLines(std::wstring_view text, std::int16_t lastNumber,
                                           FileQuestions& files, const LoopHooks& hooks,
                                           EntryText entryText);
    template <class Take>
    std::optional<std::vector<std::wstring>> collect(const LoopHooks& hooks, Take take) const;

    std::vector<std::int16_t> loadOrder_;
    std::wstring playlistPath_;
    std::int16_t highestNumber_ = 0;  // ever given: a number is not used again
    bool changed_ = false;
    bool whole_ = false;  // the playlist was read to its end
    bool empty_ = true;   // no entry was read or added
};

}  // namespace tunovka
