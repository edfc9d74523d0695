#pragma once

#include <string>
#include <string_view>

namespace tunovka {

class Form;

// The system's own dialogs, modal to a form. They let events run.

namespace Cdialog {

struct SaveArgs {
    std::wstring title;
    std::wstring filter;  // pairs of caption and pattern, all separated by "|"
    int filterIndex = 1;  // 1 is the first pair
    std::wstring folder;  // that the dialog opens in; "" leaves it to the system
    std::wstring name;    // that it offers
};

// Asks for a file to write. Returns the full path as typed, "" when it was cancelled or the form
// closed meanwhile. The dialog asks before a file is to be replaced and adds no extension.
std::wstring ShowSave(const Form& owner, const SaveArgs& args);

}  // namespace Cdialog

// Asks for a folder; `start` is selected at first ("" for none). Returns its full path, "" when the
// person cancels or chooses what is no folder of the file system, or the form closed meanwhile.
std::wstring pickFolder(const Form& owner, std::wstring_view prompt, const std::wstring& start);

}  // namespace tunovka
