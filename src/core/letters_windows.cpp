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

std::string sortKey(std::wstring_view text) {
    const DWORD how = LCMAP_SORTKEY | NORM_IGNORECASE;
    const int length = static_cast<int>(text.size());
    if (length == 0) return {};
    // Most keys fit into the first guess, which spares the question for the size.
    std::string key(text.size() * 8 + 32, '\0');
    const auto make = [&] {
        return LCMapStringW(LOCALE_USER_DEFAULT, how, text.data(), length,
                            reinterpret_cast<wchar_t*>(key.data()), static_cast<int>(key.size()));
    };
    int size = make();
    if (size == 0) {
        size = LCMapStringW(LOCALE_USER_DEFAULT, how, text.data(), length, nullptr, 0);
        key.resize(size);
        size = make();
    }
    key.resize(size);
    return key;
}

}  // namespace tunovka
