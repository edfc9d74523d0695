#pragma once

#include <optional>
#include <string>
#include <vector>

#include "ui/box_request.h"
#include "ui/list_model.h"

namespace tunovka {

// Leaves only music and playlists, by their endings in lower case, in their order, and lets events
// run per path. When cancelled, only what was looked at so far can remain.
void keepMusicAndPlaylists(std::vector<std::wstring>& paths, const LoopHooks& hooks = {});

// One row of a search's list.
struct FoundFile {
    std::wstring key;  // the file's path; "" for the row that says that nothing was found

    std::wstring name() const;  // of the file
};

// The files that a search has found. The sorting stays from one search to the next.
class SearchResult : public ListRows<FoundFile> {
  public:
    ListRow row(std::size_t position) const override;

    // Replaces the rows by these paths, each once, or by the row kNothingFound. Lets events run per
    // path; a cancellation leaves out what was not looked at.
    void list(std::vector<std::wstring> paths, const LoopHooks& hooks = {});
    void clear() { setRows({}); }
    using ListRows::sort;

    bool isEmpty() const { return count() == 0 || rows().front().key.empty(); }

    // The question whether the playlists of the result go into the new one; nullopt when there are
    // none. ASX files count as neither playlists nor music: they are always written.
    std::optional<BoxRequest> exportQuestion() const;

    // The lines of the new playlist, after the question's answer (1 is yes; not looked at when
    // there was no question): the paths in display order. nullopt when nothing is to be written.
    std::optional<std::vector<std::wstring>> exportLines(int boxAnswer) const;
};

}  // namespace tunovka
