#pragma once

#include <windows.h>

#include <deque>
#include <string>
#include <vector>

#include "ui/timer.h"
#include "ui/window.h"

namespace tunovka {

// The person in front of the system's save dialog: types the next name into each dialog that opens
// and agrees to replace a file; "" cancels. Remembers what the dialog
// offered.
class SaveAnswers {
  public:
    struct Offer {
        std::wstring title, name;
        int filter = 0;  // 1 is the first
    };

    explicit SaveAnswers(std::deque<std::wstring> answers = {}) : answers_(std::move(answers)) {
        timer_.onTick = [this] { look(); };
        timer_.setInterval(20);
    }

    std::vector<Offer> seen;
    int replaced = 0;  // how often the dialog asked whether to replace a file

  private:
    static constexpr int kName = 0x47C, kFilter = 0x470;
    static constexpr int kPatience = 250;  // ticks until a dialog that stays is cancelled

    static std::wstring textOf(HWND window) {
        wchar_t text[1024] = L"";
        SendMessageW(window, WM_GETTEXT, std::size(text), reinterpret_cast<LPARAM>(text));
        return text;
    }

    void look() {
        HWND dialogs[2] = {};  // the dialog and the question over it
        for (HWND at = nullptr; (at = FindWindowExW(nullptr, at, L"#32770", nullptr));) {
            DWORD process = 0;
            GetWindowThreadProcessId(at, &process);
            if (process != GetCurrentProcessId() || !IsWindowVisible(at)) continue;
            dialogs[GetDlgItem(at, kName) ? 0 : 1] = at;
        }
        if (dialogs[1]) {
            if (dialogs[1] == asked_) return;
            asked_ = dialogs[1];
            ++replaced;
            PostMessageW(dialogs[1], WM_COMMAND, IDYES, 0);
        } else if (dialogs[0] && dialogs[0] != answered_) {
            answer(dialogs[0]);
            patience_ = kPatience;
        } else if (dialogs[0] && --patience_ == 0) {  // it did not take the name
            PostMessageW(dialogs[0], WM_COMMAND, IDCANCEL, 0);
        }
    }

    void answer(HWND dialog) {
        answered_ = dialog;
        const HWND filter = GetDlgItem(dialog, kFilter);
        seen.push_back({textOf(dialog), textOf(GetDlgItem(dialog, kName)),
                        static_cast<int>(SendMessageW(filter, CB_GETCURSEL, 0, 0)) + 1});
        std::wstring name;
        if (!answers_.empty()) {
            name = answers_.front();
            answers_.pop_front();
        }
        SetDlgItemTextW(dialog, kName, name.c_str());
        PostMessageW(dialog, WM_COMMAND, name.empty() ? IDCANCEL : IDOK, 0);
    }

    std::deque<std::wstring> answers_;
    HWND answered_ = nullptr, asked_ = nullptr;
    int patience_ = 0;
    Timer timer_;
};

}  // namespace tunovka
