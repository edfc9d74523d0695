#pragma once

#include <string>
#include <string_view>

namespace tunovka {

// "Autor: …  Titul: …   "; an empty value reads "neuvedený". The blanks at the end separate it from
// the start while the text scrolls.
std::wstring nowPlayingText(std::wstring_view author, std::wstring_view title);

// The text one step further: its first character moved to the end. "" stays "".
std::wstring scrolledByOne(std::wstring_view text);

}  // namespace tunovka
