#include <windows.h>

#include "core/text.h"

namespace tunovka {
namespace {

// The invariant locale: the mapping must not change with the user's language, because keys and
// file names are compared after it. One character always gives one character.
std::wstring mapped(std::wstring_view text, DWORD mapping) {
    std::wstring result(text);
    if (result.empty()) return result;
    const int length = static_cast<int>(text.size());
    LCMapStringW(LOCALE_INVARIANT, mapping, text.data(), length, result.data(), length);
    return result;
}

}  // namespace

std::wstring lowerCased(std::wstring_view text) {
    return mapped(text, LCMAP_LOWERCASE);
}

std::wstring upperCased(std::wstring_view text) {
    return mapped(text, LCMAP_UPPERCASE);
}

}  // namespace tunovka
