#include "core/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

#include "core/errors.h"

namespace tunovka {

std::wstring decimal(std::int64_t number) {
    std::array<char, 20> digits{};
    char* const end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    return std::wstring(digits.data(), end);
}

std::wstring formatGrouped(std::uint64_t number) {
    const std::wstring digits = decimal(static_cast<std::int64_t>(number));
    std::wstring text;
    for (std::size_t place = std::max<std::size_t>(digits.size(), 9); place-- > 0;) {
        if (place < digits.size()) text += digits[digits.size() - 1 - place];
        if (place == 6 || place == 3) text += L' ';
    }
    return text;
}

std::wstring trimAtNul(std::wstring_view text) {
    return std::wstring(text.substr(0, text.find(L'\0')));
}

std::wstring trimBlanks(std::wstring_view text) {
    const std::size_t first = text.find_first_not_of(L' ');
    if (first == std::wstring_view::npos) return {};
    return std::wstring(text.substr(first, text.find_last_not_of(L' ') - first + 1));
}

std::vector<std::wstring> split(std::wstring_view text, wchar_t separator) {
    std::vector<std::wstring> parts;
    while (true) {
        const std::size_t end = text.find(separator);
        parts.emplace_back(text.substr(0, end));
        if (end == std::wstring_view::npos) return parts;
        text.remove_prefix(end + 1);
    }
}

int roundHalfEven(double value) {
    const double rounded = std::nearbyint(value);  // the default rounding mode is half to even
    if (!(rounded >= std::numeric_limits<int>::min() && rounded <= std::numeric_limits<int>::max()))
        throw RuntimeError(kOverflow);
    return static_cast<int>(rounded);
}

std::int16_t count16(std::int64_t value) {
    const auto count = static_cast<std::int16_t>(value);
    if (count != value) throw RuntimeError(kOverflow);
    return count;
}

}  // namespace tunovka
