#pragma once

#include <windows.h>

#include <string>

#include "support/box_answers.h"

namespace tunovka {

// The person at the input box, once: sees what it offers, types over it and presses a key.
class Typing {
  public:
    Typing(const std::wstring& text, WPARAM key = VK_RETURN) {
        timer_.onTick = [this, text, key] {
            Form* form = openForm(L"frmVstup");
            if (!form) return;
            timer_.setInterval(0);
            Window& field = *controlNamed(*form, L"txtodpoved");
            title = controlNamed(*form, L"PicZahlavie")->text();
            prompt = controlNamed(*form, L"lblotazka")->text();
            offered = field.text();
            SendMessageW(field.handle(), EM_GETSEL, reinterpret_cast<WPARAM>(&from),
                         reinterpret_cast<LPARAM>(&to));
            hadFocus = field.hasFocus();
            field.setText(text);
            PostMessageW(field.handle(), WM_KEYDOWN, key, 0);
        };
        timer_.setInterval(10);
    }
    std::wstring title, prompt, offered;
    DWORD from = 9, to = 9;
    bool hadFocus = false;

  private:
    Timer timer_;
};

}  // namespace tunovka
