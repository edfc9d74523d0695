#pragma once

#include <cstdint>
#include <string>

#include "ui/box_request.h"

namespace tunovka {

// The request to the message box and its answer, as every question of the program hands them over:
// 1, 2 or 3 for the buttons in order, 0 when the box was closed without a choice.
extern std::wstring BoxTitle, BoxText, BoxButtons;
extern std::int16_t BoxAnswer;

// Shows frmBox modally with the three texts set and returns its answer. A box that is opened over
// another one never answers for it.
std::int16_t ask(const std::wstring& title, const std::wstring& text, const std::wstring& buttons);
inline std::int16_t ask(const BoxRequest& request) {
    return ask(request.title, request.text, request.buttons);
}

// Shows a notice from the message loop: after what runs now has returned, and after any box that
// is open has been answered.
void notifyLater(const std::wstring& title, const std::wstring& text, const std::wstring& button);

// Makes a failure that nobody handled a notice: title "CHYBA", its number and description.
void installFailureNotice();

}  // namespace tunovka
