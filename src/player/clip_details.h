#pragma once

#include <functional>
#include <string>
#include <string_view>

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

// The last bytes of a file (128 or more) as an ID3v1 tag: title and artist without their padding.
// `fromAnsi` turns the code page's bytes into text.
ClipDetails id3v1Details(std::string_view fileEnd,
                         const std::function<std::wstring(std::string_view)>& fromAnsi);

// A title as playlists write it: "Author - Title", or a title alone.
ClipDetails listedDetails(std::wstring_view text);

}  // namespace tunovka
