#pragma once

#include <string>
#include <string_view>

namespace tunovka {

// Bytes in the system's ANSI code page as text; no byte is dropped. Where that is UTF-8, what is
// not valid UTF-8 is read as code page 1250, in which playlists and tags were written before.
std::wstring fromAnsi(std::string_view bytes);

// Text as bytes in the system's ANSI code page. A character that the code page cannot hold raises
// kInvalidCall with a description that names the text; nothing is ever replaced silently.
std::string toAnsi(std::wstring_view text);

// The same for a given code page of the system's.
std::wstring fromCodePage(unsigned codePage, std::string_view bytes);
std::string toCodePage(unsigned codePage, std::wstring_view text);

}  // namespace tunovka
