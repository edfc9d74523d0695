#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace tunovka::MultiMedialny {

inline constexpr std::size_t kId3v1Size = 128;  // bytes, counted from the file's end

// The fixed 128-byte record at the end of an MP3 file, its fields without their padding.
struct Id3v1Tag {
    std::wstring Title, Artist, Album, Year, Comment;
};

// Reads the tag out of a file's last bytes (128 or more); nullopt when these hold none. `fromAnsi`
// turns the code page's bytes into text.
std::optional<Id3v1Tag> parseId3v1(std::string_view fileEnd,
                                   const std::function<std::wstring(std::string_view)>& fromAnsi);

}  // namespace tunovka::MultiMedialny
