#pragma once

#include <windows.h>

#include <functional>
#include <string>

#include "ui/timer.h"

// Answering the system's own dialogs from inside their loops.

namespace tunovka {

inline constexpr int kNameBox = 0x47C, kFilterBox = 0x470;  // of the save dialog

// The dialog that belongs to a window, nullptr before it is there.
inline HWND dialogOf(HWND owner) {
    HWND dialog = nullptr;
    while ((dialog = FindWindowExW(nullptr, dialog, L"#32770", nullptr)))
        if (GetWindow(dialog, GW_OWNER) == owner && IsWindowVisible(dialog)) return dialog;
    return nullptr;
}

inline std::wstring itemText(HWND dialog, int item) {
    wchar_t text[512] = L"";
    GetDlgItemTextW(dialog, item, text, 512);
    return text;
}

// Answers the next dialog of a window once, when it has opened.
class Answering {
  public:
    Answering(HWND owner, std::function<void(HWND dialog)> answer) : owner_(owner) {
        timer_.onTick = [this, answer] {
            const HWND dialog = dialogOf(owner_);
            if (!dialog) return;
            timer_.setInterval(0);
            answer(dialog);
        };
        timer_.setInterval(20);
    }

  private:
    HWND owner_;
    Timer timer_;
};

}  // namespace tunovka
