#include "core/text.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "core/errors.h"

namespace tunovka {
namespace {

// One element of a pattern: a literal, "?", "*", "#" or a bracketed list.
struct Element {
    std::wstring_view list;  // what stands between the brackets, without the leading "!"
    std::size_t next;        // where the following element begins
    bool isList = false;
    bool negated = false;

    // "[]" stands for no character at all; "[!]" is the plain exclamation mark.
    bool isNothing() const { return isList && !negated && list.empty(); }
};

Element elementAt(std::wstring_view pattern, std::size_t at) {
    if (pattern[at] != L'[') return {{}, at + 1};
    const std::size_t close = pattern.find(L']', at);
    if (close == std::wstring_view::npos) throw RuntimeError(kInvalidPattern, pattern);
    Element element{pattern.substr(at + 1, close - at - 1), close + 1, true};
    if (element.list.size() > 1 && element.list.front() == L'!') {
        element.negated = true;
        element.list.remove_prefix(1);
    }
    return element;
}

// A "-" is a range only between two characters; at either end of the list it is itself.
bool isRange(std::wstring_view list, std::size_t at) {
    return at + 2 < list.size() && list[at + 1] == L'-';
}

bool listHolds(std::wstring_view list, wchar_t letter) {
    for (std::size_t at = 0; at < list.size(); ++at) {
        if (isRange(list, at)) {
            if (list[at] <= letter && letter <= list[at + 2]) return true;
            at += 2;
        } else if (list[at] == letter) {
            return true;
        }
    }
    return false;
}

// A faulty pattern is refused whatever the text is, so that the fault shows at once.
void requireValid(std::wstring_view pattern) {
    if (pattern.find(L'[') == std::wstring_view::npos) return;
    for (std::size_t at = 0; at < pattern.size();) {
        const Element element = elementAt(pattern, at);
        for (std::size_t i = 0; i < element.list.size(); ++i) {
            if (!isRange(element.list, i)) continue;
            if (element.list[i] > element.list[i + 2]) throw RuntimeError(kInvalidPattern, pattern);
            i += 2;
        }
        at = element.next;
    }
}

bool accepts(const Element& element, wchar_t sign, wchar_t letter) {
    if (element.isList) return listHolds(element.list, letter) != element.negated;
    if (sign == L'?') return true;
    if (sign == L'#') return letter >= L'0' && letter <= L'9';
    return sign == letter;
}

}  // namespace

bool like(std::wstring_view text, std::wstring_view pattern) {
    requireValid(pattern);
    constexpr std::size_t kNone = std::wstring_view::npos;
    std::size_t t = 0, p = 0;
    // The last "*" seen: on a mismatch it takes one more character. Earlier ones need no second
    // thought, which keeps the work within text length times pattern length.
    std::size_t afterStar = kNone, starTaken = 0;
    while (true) {
        if (p < pattern.size() && pattern[p] == L'*') {
            afterStar = ++p;
            starTaken = t;
            continue;
        }
        if (p < pattern.size()) {
            const Element element = elementAt(pattern, p);
            if (element.isNothing()) {
                p = element.next;
                continue;
            }
            if (t < text.size() && accepts(element, pattern[p], text[t])) {
                p = element.next;
                ++t;
                continue;
            }
        } else if (t == text.size()) {
            return true;
        }
        if (afterStar == kNone || starTaken == text.size()) return false;
        t = ++starTaken;
        p = afterStar;
    }
}

std::wstring formatGrouped(std::uint64_t number) {
    const std::wstring digits = number == 0 ? L"0" : std::to_wstring(number);
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

}  // namespace tunovka
