#include "player/now_playing.h"

namespace tunovka {
namespace {

std::wstring_view orUnknown(std::wstring_view value) {
    return value.empty() ? L"neuvedený" : value;
}

// A character outside the basic plane takes two units where wchar_t has two bytes.
bool isLeadingHalf(wchar_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}

}  // namespace

std::wstring nowPlayingText(std::wstring_view author, std::wstring_view title) {
    return std::wstring(L"Autor: ")
        .append(orUnknown(author))
        .append(L"  Titul: ")
        .append(orUnknown(title))
        .append(L"   ");
}

std::wstring scrolledByOne(std::wstring_view text) {
    if (text.empty()) return {};
    const std::size_t first = isLeadingHalf(text[0]) && text.size() > 1 ? 2 : 1;
    return std::wstring(text.substr(first)).append(text.substr(0, first));
}

}  // namespace tunovka
