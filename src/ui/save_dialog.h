#pragma once

#include <string>

namespace tunovka {

class Form;

struct SaveDialogArgs {
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
std::wstring askSavePath(const Form& owner, const SaveDialogArgs& args);

}  // namespace tunovka
