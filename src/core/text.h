#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tunovka {

// The number in decimal digits, "-" before a negative one. std::to_wstring prints through a format,
// which long lists and the program's size would pay for.
std::wstring decimal(std::int64_t number);

// The number in the form "### ### ###": groups of three digits with the literal blanks kept, so
// 5 gives "  5", 0 gives "  0", 1234 gives " 1 234"; digits beyond nine grow the first group.
std::wstring formatGrouped(std::uint64_t number);

// Lower and upper case by the system's own simple mapping, letter by letter.
std::wstring lowerCased(std::wstring_view text);
std::wstring upperCased(std::wstring_view text);

// Bytes whose order is the order of the user's language, letter case ignored: compare two of them
// instead of two texts where many are sorted.
std::string sortKey(std::wstring_view text);

// Text up to (not including) the first NUL; the whole text if it has none.
std::wstring trimAtNul(std::wstring_view text);

// Blanks (U+0020 only) removed from both ends.
std::wstring trimBlanks(std::wstring_view text);

// The parts between separators; n separators give n + 1 parts, an empty text one empty part.
std::vector<std::wstring> split(std::wstring_view text, wchar_t separator);

// Whole number rounded half to even, as the program's arithmetic rounds.
int roundHalfEven(double value);

// A count that the program defines as a 16-bit signed integer. Raises kOverflow for one outside.
std::int16_t count16(std::int64_t value);

}  // namespace tunovka
