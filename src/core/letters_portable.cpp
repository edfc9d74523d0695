#include <clocale>
#include <cwctype>

#include "core/text.h"

// Stands in for the system's letter mapping where the logic runs without Windows.
namespace tunovka {
namespace {

locale_t letters() {
    static const locale_t locale = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    return locale;
}

}  // namespace

std::wstring lowerCased(std::wstring_view text) {
    std::wstring result(text);
    for (wchar_t& letter : result) letter = towlower_l(letter, letters());
    return result;
}

std::wstring upperCased(std::wstring_view text) {
    std::wstring result(text);
    for (wchar_t& letter : result) letter = towupper_l(letter, letters());
    return result;
}

// The order of the letters' numbers is enough where no user looks at it.
std::string sortKey(std::wstring_view text) {
    std::string key;
    for (const wchar_t letter : lowerCased(text))
        for (const int shift : {24, 16, 8, 0}) key += static_cast<char>(letter >> shift & 0xFF);
    return key;
}

}  // namespace tunovka
