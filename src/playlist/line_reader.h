#pragma once

#include <string_view>

namespace tunovka {

// Walks the lines of a text without copying it: a line ends at LF, a CR right before it is dropped,
// a lone CR and a NUL are data, and a last LF gives no extra empty line. The views point into the
// text, which must outlive them.
class WideLineReader {
  public:
    explicit WideLineReader(std::wstring_view text) : rest_(text) {}

    // Gives the next line; false at the end, with `line` untouched.
    bool next(std::wstring_view& line) {
        if (rest_.empty()) return false;
        const std::size_t end = rest_.find(L'\n');
        line = rest_.substr(0, end);
        if (end == rest_.npos) {
            rest_ = {};
            return true;
        }
        rest_.remove_prefix(end + 1);
        if (line.ends_with(L'\r')) line.remove_suffix(1);
        return true;
    }

  private:
    std::wstring_view rest_;
};

}  // namespace tunovka
