#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace tunovka::MultiMedialny {

inline constexpr std::size_t kId3v1Size = 128;  // bytes, counted from the file's end

// The fixed 128-byte record at the end of an MP3 file. Fields keep their padding.
struct Id3v1Tag {
    std::wstring Title = std::wstring(30, L'\0');
    std::wstring Artist = std::wstring(30, L'\0');
    std::wstring Album = std::wstring(30, L'\0');
    std::wstring Year = std::wstring(4, L'\0');
    std::wstring Comment = std::wstring(30, L'\0');
};

// Reads the tag out of a file's last bytes (128 or more); nullopt when these hold none. `fromAnsi`
// turns the code page's bytes into text; where that is shorter, NULs fill it up.
std::optional<Id3v1Tag> parseId3v1(std::string_view fileEnd,
                                   const std::function<std::wstring(std::string_view)>& fromAnsi);

// The tag of a file; an empty one when there is no such file or it carries none. Raises
// kBadRecordNumber for a file that is too short to end in a tag, and whatever reading raises.
Id3v1Tag ReadId3v1(const std::wstring& path);

// A field as it is shown: without the NULs and blanks of its padding.
std::wstring shownField(std::wstring_view field);

}  // namespace tunovka::MultiMedialny
