#pragma once

#include <windows.h>

#include <optional>

namespace tunovka {

// Answers WM_GETOBJECT for a window that stands in for a system control, so that a screen reader
// tells its role ("BUTTON", "SCROLLBAR") and reads its window text as its name. nullopt when the
// question is for another object or the system has no accessibility support.
std::optional<LRESULT> accessibleAs(const wchar_t* systemClass, HWND window, WPARAM wparam,
                                    LPARAM lparam);

}  // namespace tunovka
