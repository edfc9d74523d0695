#pragma once

#include <string>
#include <string_view>

namespace tunovka {

class Form;

// The system's own dialogs, modal to a form. They let events run.

// The common dialog of a form.
namespace Cdialog {

struct SaveArgs {
    std::wstring title;
    std::wstring filter;  // pairs of caption and pattern, all separated by "|"
    int filterIndex = 1;  // 1 is the first pair
    std::wstring folder;  // that the dialog opens in; "" leaves it to the system
    std::wstring name;    // that it offers
};

// Shows the system's save dialog over a form, with the program's other windows switched off, and
// returns the full path as typed, or "" when it was cancelled or the form closed meanwhile. The
// dialog asks before a file is to be replaced and adds no extension; the current directory stays
// as it is. Lets events run.
std::wstring ShowSave(const Form& owner, const SaveArgs& args);

}  // namespace Cdialog

// Asks for a folder through the shell's own window, modal to a form. `start` is selected at first
// ("" for none). Returns the folder's full path, of any length and with any letters; "" when the
// person cancels or chooses something that is no folder of the file system, or the form closed
// meanwhile. Lets events run.
std::wstring pickFolder(const Form& owner, std::wstring_view prompt, const std::wstring& start);

}  // namespace tunovka
