#pragma once

#include <windows.h>

#include <optional>
#include <string>

namespace tunovka {

// What a screen reader is told of a control, beside what the system knows of every window.
struct AccessibleFacts {
    long role = 0;                     // ROLE_SYSTEM_...; 0 leaves role and state to the system
    std::optional<std::wstring> name;  // nullopt leaves it to the system, as with the value
    std::optional<std::wstring> value;
    long state = 0;       // STATE_SYSTEM_...; focus, visible and enabled are added
    std::wstring action;  // name of the default action, for a control that takes BM_CLICK
};

// Answers WM_GETOBJECT for the inner part of a window of the program: the object that it hands out
// asks Window::describe() each time. nullopt when the question is for another part or the system
// has no accessibility support.
std::optional<LRESULT> accessibleAnswer(HWND window, WPARAM wparam, LPARAM lparam);

}  // namespace tunovka
