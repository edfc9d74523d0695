#pragma once

#include <string>
#include <string_view>

namespace tunovka {

class Form;

// Asks for a folder through the shell's own window, modal to a form. `start` is selected at first
// ("" for none). Returns the folder's full path, of any length and with any letters; "" when the
// person cancels or chooses something that is no folder of the file system, or the form closed
// meanwhile. Lets events run.
std::wstring pickFolder(const Form& owner, std::wstring_view prompt, const std::wstring& start);

}  // namespace tunovka
