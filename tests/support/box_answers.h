#pragma once

#include <windows.h>

#include <deque>
#include <string>
#include <vector>

#include "ui/box_request.h"
#include "ui/form.h"
#include "ui/image.h"
#include "ui/timer.h"

namespace tunovka {

// What the system enumerates, in its order.
class WindowList {
  public:
    static std::vector<HWND> below(HWND parent) {
        std::vector<HWND> found;
        EnumChildWindows(parent, take, reinterpret_cast<LPARAM>(&found));
        return found;
    }
    static std::vector<HWND> ofThisThread() {
        std::vector<HWND> found;
        EnumThreadWindows(GetCurrentThreadId(), take, reinterpret_cast<LPARAM>(&found));
        return found;
    }

  private:
    static BOOL CALLBACK take(HWND window, LPARAM found) {
        reinterpret_cast<std::vector<HWND>*>(found)->push_back(window);
        return TRUE;
    }
};

// A control of a form by its name in the code, nullptr when there is none. Hidden ones count.
inline Window* controlNamed(const Form& form, const std::wstring& name) {
    for (const HWND handle : WindowList::below(form.handle())) {
        Window* const window = windowOf(handle);
        if (window && window->name() == name) return window;
    }
    return nullptr;
}

// Presses and releases a control in its middle, as the mouse does.
inline void pressAndRelease(Window& control, UINT down = WM_LBUTTONDOWN, UINT up = WM_LBUTTONUP) {
    const Size size = control.clientSize();
    const LPARAM middle = MAKELPARAM(size.width / 2, size.height / 2);
    const HWND handle = control.handle();
    SendMessageW(handle, down, down == WM_LBUTTONDOWN ? MK_LBUTTON : MK_RBUTTON, middle);
    SendMessageW(handle, up, 0, middle);
}

// Lets the message loop run until a condition holds; false when it does not within the time.
template <typename Condition>
bool runUntil(Condition condition, DWORD milliseconds = 30000) {
    const DWORD start = GetTickCount();
    const UINT_PTR heartbeat = SetTimer(nullptr, 0, 10, nullptr);
    bool holds = condition();
    MSG message;
    while (!holds && GetTickCount() - start < milliseconds &&
           GetMessageW(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
        holds = condition();
    }
    KillTimer(nullptr, heartbeat);
    return holds;
}

// The form of that name that is open in front of the person, nullptr when there is none.
inline Form* openForm(const std::wstring& name) {
    for (const HWND handle : WindowList::ofThisThread()) {
        auto* const form = dynamic_cast<Form*>(windowOf(handle));
        if (form && form->name() == name && !form->isClosing() && IsWindowVisible(handle) &&
            IsWindowEnabled(handle))
            return form;
    }
    return nullptr;
}

// The person in front of the message box: answers each box that opens with the next number (0 is
// the close picture) by the mouse, and remembers what the box showed. Boxes past the last number
// are closed as well, so that a test never hangs.
class BoxAnswers {
  public:
    explicit BoxAnswers(std::deque<int> answers = {}) : answers_(std::move(answers)) {
        timer_.onTick = [this] { look(); };
        timer_.setInterval(10);
    }

    // Answers for the next boxes, in place of those that are left.
    void answer(std::deque<int> answers) { answers_ = std::move(answers); }

    std::vector<BoxRequest> seen;
    std::size_t unanswered() const { return answers_.size(); }

  private:
    void look() {
        Form* box = openForm(L"frmBox");
        if (!box) return;
        BoxRequest shown{controlNamed(*box, L"PicZahlavie")->text(),
                         controlNamed(*box, L"lblotazka")->text(), L""};
        for (int i = 1; Window* button = controlNamed(*box, L"Itlačítko" + std::to_wstring(i)); ++i)
            shown.buttons += (i > 1 ? L";" : L"") + button->text();
        seen.push_back(shown);
        int answer = 0;
        if (!answers_.empty()) {
            answer = answers_.front();
            answers_.pop_front();
        }
        pressAndRelease(
            *controlNamed(*box, answer == 0 ? L"IZavri" : L"Itlačítko" + std::to_wstring(answer)));
    }

    std::deque<int> answers_;
    Timer timer_;
};

}  // namespace tunovka
