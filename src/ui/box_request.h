#pragma once

#include <string>

namespace tunovka {

// What a message box shows. Captions are separated by ";" and keep their blanks; a lone CR in the
// text ends a line.
struct BoxRequest {
    std::wstring title;
    std::wstring text;
    std::wstring buttons;

    bool operator==(const BoxRequest&) const = default;
};

}  // namespace tunovka
