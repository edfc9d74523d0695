#pragma once

#include <string_view>

namespace tunovka {

// Walks the lines of a text without copying it: a line ends at LF, a CR right before it is dropped,
// a lone CR and a NUL are data, and a last LF gives no extra empty line. The views point into the
// text, which must outlive them.
template <class Letter>
class BasicLineReader {
  public:
    explicit BasicLineReader(std::basic_string_view<Letter> text) : rest_(text) {}

    // Gives the next line; false at the end, with `line` untouched.
    bool next(std::basic_string_view<Letter>& line) {
        if (rest_.empty()) return false;
        const std::size_t end = rest_.find(Letter{'\n'});
        line = rest_.substr(0, end);
        if (end == rest_.npos) {
            rest_ = {};
            return true;
        }
        rest_.remove_prefix(end + 1);
        if (line.ends_with(Letter{'\r'})) line.remove_suffix(1);
        return true;
    }

  private:
    std::basic_string_view<Letter> rest_;
};

using LineReader = BasicLineReader<char>;         // bytes as they stand in the file
using WideLineReader = BasicLineReader<wchar_t>;  // a file's whole text, converted at once

}  // namespace tunovka
