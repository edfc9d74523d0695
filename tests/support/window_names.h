#pragma once

#include <windows.h>

#include <string>

namespace tunovka {

// What a window of any thread or program is called, without asking it.

inline std::wstring className(HWND window) {
    wchar_t name[256] = L"";
    GetClassNameW(window, name, 256);
    return name;
}

// The control's name in the program's code; "" for a window that has none.
inline std::wstring codeName(HWND window) {
    const auto atom =
        static_cast<ATOM>(reinterpret_cast<UINT_PTR>(GetPropW(window, L"Tunovka.name")));
    wchar_t name[256] = L"";
    if (atom) GlobalGetAtomNameW(atom, name, 256);
    return name;
}

}  // namespace tunovka
