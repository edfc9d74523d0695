#pragma once

#include <windows.h>

#include <deque>
#include <string>
#include <vector>

#include "support/dialog_answers.h"

namespace tunovka {

// The person in front of a window's save dialogs: types the next name into each one that opens and
// agrees to replace a file; "" cancels, as does a dialog past the last name. Remembers what the
// dialogs offered.
class SaveAnswers {
  public:
    struct Offer {
        std::wstring title, name;
        int filter = 0;  // 1 is the first
    };

    explicit SaveAnswers(HWND owner, std::deque<std::wstring> answers = {})
        : owner_(owner), answers_(std::move(answers)) {
        timer_.onTick = [this] { look(); };
        timer_.setInterval(20);
    }

    std::vector<Offer> seen;
    int replaced = 0;  // how often the dialog asked whether to replace a file

  private:
    static constexpr int kPatience = 1000;  // ticks until a dialog that stays is cancelled

    void look() {
        const HWND dialog = dialogOf(owner_);
        const HWND question = dialog ? dialogOf(dialog) : nullptr;
        if (question) {
            if (std::exchange(asked_, question) == question) return;
            ++replaced;
            PostMessageW(question, WM_COMMAND, IDYES, 0);
        } else if (dialog && std::exchange(answered_, dialog) != dialog) {
            answer(dialog);
        } else if (dialog && --patience_ == 0) {  // it did not take the name
            PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
        }
    }

    void answer(HWND dialog) {
        wchar_t title[256] = L"";
        GetWindowTextW(dialog, title, 256);
        seen.push_back(
            {title, itemText(dialog, kNameBox),
             static_cast<int>(SendDlgItemMessageW(dialog, kFilterBox, CB_GETCURSEL, 0, 0)) + 1});
        std::wstring name;
        if (!answers_.empty()) {
            name = answers_.front();
            answers_.pop_front();
        }
        SetDlgItemTextW(dialog, kNameBox, name.c_str());
        PostMessageW(dialog, WM_COMMAND, name.empty() ? IDCANCEL : IDOK, 0);
        patience_ = kPatience;
    }

    HWND owner_;
    std::deque<std::wstring> answers_;
    HWND answered_ = nullptr, asked_ = nullptr;
    int patience_ = 0;
    Timer timer_;
};

}  // namespace tunovka
