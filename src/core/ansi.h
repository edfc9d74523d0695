#pragma once

#include <string>
#include <string_view>

namespace tunovka {

// Bytes in the system's ANSI code page as text. Bytes that the code page does not define become
// what the system makes of them; no byte is dropped.
std::wstring fromAnsi(std::string_view bytes);

// Text as bytes in the system's ANSI code page. A character that the code page cannot hold raises
// kInvalidCall with the text named in the description; nothing is ever replaced silently.
std::string toAnsi(std::wstring_view text);

}  // namespace tunovka
