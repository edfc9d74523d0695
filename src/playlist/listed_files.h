#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tunovka {

// Title and author of a clip; each is empty when it is not known.
struct ClipDetails {
    std::wstring title;
    std::wstring author;

    bool operator==(const ClipDetails&) const = default;

    // Each part that is known, else the other's.
    ClipDetails orElse(const ClipDetails& other) const {
        return {title.empty() ? other.title : title, author.empty() ? other.author : author};
    }
};

// One entry of a playlist: where the file should be, and what the list tells of it.
struct ListedFile {
    std::wstring path;
    ClipDetails listed;

    bool operator==(const ListedFile&) const = default;
};

// The entries of a playlist's text by the explorer's line grammar, made absolute against the
// list's own folder (ending in "\"). Titles come from the "#EXTINF:…,…" line before an entry and
// from the "TitleN=…" line with the number of a "FileN=…" entry; "Author - Title" names both.
// Whether the files exist is not asked; a reference that the grammar refuses is left out.
std::vector<ListedFile> listedFiles(std::wstring_view text, std::wstring_view folder);

}  // namespace tunovka
