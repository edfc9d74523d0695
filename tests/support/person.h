#pragma once

#include <windows.h>
// windows.h first: it needs its types.
#include <commctrl.h>

#include <deque>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "core/loop.h"
#include "ui/box_request.h"
#include "ui/form.h"
#include "ui/image.h"

// The person in front of the program: finding what is on the screen, waiting, and answering.

namespace tunovka {

// What the system enumerates, in its order.
class WindowList {
  public:
    static std::vector<HWND> below(HWND parent) {
        std::vector<HWND> found;
        EnumChildWindows(parent, take, reinterpret_cast<LPARAM>(&found));
        return found;
    }
    static std::vector<HWND> ofThread(DWORD thread) {
        std::vector<HWND> found;
        EnumThreadWindows(thread, take, reinterpret_cast<LPARAM>(&found));
        return found;
    }
    static std::vector<HWND> ofThisThread() { return ofThread(GetCurrentThreadId()); }

  private:
    static BOOL CALLBACK take(HWND window, LPARAM found) {
        reinterpret_cast<std::vector<HWND>*>(found)->push_back(window);
        return TRUE;
    }
};

// The system's name for a kind of window.
inline std::wstring kindOf(HWND window) {
    wchar_t kind[64] = L"";
    GetClassNameW(window, kind, 64);
    return kind;
}

// Where one of the system's dialogs takes a file name, nullptr when it takes none.
inline HWND nameField(HWND dialog) {
    constexpr int kNameBox = 0x47C;  // the older dialog's; it gives its text to the field within
    if (const HWND box = GetDlgItem(dialog, kNameBox)) return box;
    for (const HWND window : WindowList::below(dialog))
        if (kindOf(window) == WC_EDITW && IsWindowVisible(window)) return window;
    return nullptr;
}

// A control of a form by its name in the code, nullptr when there is none. Hidden ones count.
inline Window* controlNamed(const Form& form, const std::wstring& name) {
    for (const HWND handle : WindowList::below(form.handle())) {
        Window* const window = windowOf(handle);
        if (window && window->name() == name) return window;
    }
    return nullptr;
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

// The same where it must be there: else the test ends, and says so.
template <class Sought>
Sought& existing(Sought* found, const std::wstring& name) {
    if (!found) throw std::runtime_error("no " + std::string(name.begin(), name.end()));
    return *found;
}
inline Window& control(const Form& form, const std::wstring& name) {
    return existing(controlNamed(form, name), name);
}

// What was shown, in its order; whoever asks for more than that ends the test, not the program.
template <class Thing>
struct Shown : std::vector<Thing> {
    const Thing& operator[](std::size_t at) const { return this->at(at); }
    const Thing& back() const { return this->at(this->size() - 1); }
};

// Presses a key of a control, or turns the wheel over it.
inline void pressKey(const Window& control, WPARAM key) {
    SendMessageW(control.handle(), WM_KEYDOWN, key, 1);
}
inline void turnWheel(const Window& control, int by) {
    SendMessageW(control.handle(), WM_MOUSEWHEEL, MAKEWPARAM(0, by), 0);
}

// Presses and releases a control at a point of it, as the mouse does.
inline void clickAt(const Window& control, Point at, UINT down = WM_LBUTTONDOWN,
                    UINT up = WM_LBUTTONUP) {
    const LPARAM place = MAKELPARAM(at.x, at.y);
    SendMessageW(control.handle(), down, up == WM_LBUTTONUP ? MK_LBUTTON : MK_RBUTTON, place);
    SendMessageW(control.handle(), up, 0, place);
}

// The same in its middle.
inline void pressAndRelease(const Window& control, UINT down = WM_LBUTTONDOWN,
                            UINT up = WM_LBUTTONUP) {
    const Size size = control.clientSize();
    clickAt(control, {size.width / 2, size.height / 2}, down, up);
}

// The colour that a control shows at a share of its width, half-way down or so many pixels.
inline COLORREF colorAt(const Window& control, double share, int y = -1) {
    const Size size = control.clientSize();
    const HDC dc = GetDC(control.handle());
    const int x = static_cast<int>(share * size.width);
    const COLORREF color = GetPixel(dc, x, y < 0 ? size.height / 2 : y);
    ReleaseDC(control.handle(), dc);
    return color;
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

// Lets everything run that has been sent or posted so far, and every timer of that interval once: a
// timer's message comes after every other one.
inline void letTimersTick(UINT interval = 10) {
    Timer timer;
    int ticks = 0;
    timer.onTick = [&] { ++ticks; };
    timer.setInterval(interval);
    runUntil([&] { return ticks >= 3; });
}

// Does something once: when a condition holds while events run.
class When {
  public:
    When(std::function<bool()> holds, std::function<void()> act, unsigned interval = 10) {
        timer_.onTick = [this, holds, act] {
            if (!holds()) return;
            timer_.setInterval(0);
            act();
        };
        timer_.setInterval(interval);
    }
    bool happened() const { return timer_.interval() == 0; }

  private:
    Timer timer_;
};

// Answers by a script what opens in front of it, by mouse and keys, and remembers what was shown.
// Past the script's end everything is refused, so that a test never hangs.
class Person {
  public:
    struct Dialog {
        std::wstring title, name;
        int filter = 0;  // 1 is the first
    };
    struct Input {
        std::wstring offered;
        bool hadFocus;
    };

    explicit Person(std::deque<int> answers = {}) : answers_(std::move(answers)) {
        timer_.onTick = [this] { look(); };
        timer_.setInterval(10);
    }

    // Buttons for the next message boxes, in place of those that are left; 0 is the close picture.
    void answer(std::deque<int> answers) { answers_ = std::move(answers); }
    // Names for the system's next dialogs, "" cancels; agrees to replace files. A folder dialog is
    // accepted as it opens whatever the name.
    void saveAs(std::deque<std::wstring> names) { names_ = std::move(names); }
    static constexpr wchar_t kAsOffered[] = L"?";
    // Texts for the next input boxes; none presses Escape.
    void type(std::deque<std::optional<std::wstring>> texts) { texts_ = std::move(texts); }
    // Sees each window before it is answered or closed.
    std::function<void(const Form&)> before;
    // Forms of this name are closed, and so are pop-up menus.
    void closeForms(const std::wstring& name) { closed_ = name; }
    void closeMenus() { closesMenus_ = true; }

    Shown<BoxRequest> seen;  // message boxes
    Shown<Dialog> dialogs;
    Shown<Input> inputs;
    int replaced = 0;  // how often the system asked whether to replace a file

    std::size_t unanswered() const { return answers_.size(); }

  private:
    static constexpr int kFilterBox = 0x470, kFolderTree = 14145;

    template <typename Answer>
    static Answer next(std::deque<Answer>& script) {
        Answer answer{};
        if (!script.empty()) {
            answer = std::move(script.front());
            script.pop_front();
        }
        return answer;
    }

    void look() {
        if (closesMenus_) EndMenu();
        for (const std::wstring& name : {closed_, kBox, kInput})
            if (Form* const form = openForm(name)) return meet(*form);
        for (const HWND window : WindowList::ofThisThread())
            if (kindOf(window) == L"#32770" && IsWindowVisible(window) && IsWindowEnabled(window))
                return answerDialog(window);
        answered_.clear();
        patience_ = 0;
    }

    void meet(Form& form) {
        timer_.setInterval(0);
        if (before) before(form);
        timer_.setInterval(10);
        if (form.name() == kBox)
            answerBox(form);
        else if (form.name() == kInput)
            answerInput(form);
        else
            PostMessageW(form.handle(), WM_CLOSE, 0, 0);
    }

    void answerBox(Form& box) {
        BoxRequest shown{
            control(box, L"PicZahlavie").text(), control(box, L"lblotazka").text(), {}};
        for (int i = 1; Window* button = controlNamed(box, L"Itlačítko" + std::to_wstring(i)); ++i)
            shown.buttons += (i > 1 ? L";" : L"") + button->text();
        seen.push_back(shown);
        const int answer = next(answers_);
        Window* button = controlNamed(box, L"Itlačítko" + std::to_wstring(answer));
        pressAndRelease(button ? *button : control(box, L"IZavri"));
    }

    void answerInput(Form& input) {
        if (!answered_.insert(input.handle()).second) return;
        Window& field = control(input, L"txtodpoved");
        inputs.push_back({field.text(), field.hasFocus()});
        const std::optional<std::wstring> text = next(texts_);
        if (text) field.setText(*text);
        PostMessageW(field.handle(), WM_KEYDOWN, text ? VK_RETURN : VK_ESCAPE, 0);
    }

    void answerDialog(HWND dialog) {
        const bool again = !answered_.insert(dialog).second;
        if (again && ++patience_ < 20) return;
        patience_ = 0;
        if (GetDlgItem(dialog, IDYES)) {
            replaced += !again;
            PostMessageW(dialog, WM_COMMAND, IDYES, 0);
        } else if (again || !(nameField(dialog) || GetDlgItem(dialog, kFolderTree))) {
            PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);  // it did not take the answer
        } else {
            const HWND field = nameField(dialog);
            wchar_t title[512] = L"", offered[512] = L"";
            SendMessageW(dialog, WM_GETTEXT, 512, reinterpret_cast<LPARAM>(title));
            SendMessageW(field, WM_GETTEXT, 512, reinterpret_cast<LPARAM>(offered));
            const auto filter = SendDlgItemMessageW(dialog, kFilterBox, CB_GETCURSEL, 0, 0);
            dialogs.push_back({title, offered, static_cast<int>(filter) + 1});
            const std::wstring name = next(names_);
            if (field && name != kAsOffered) SetWindowTextW(field, name.c_str());
            PostMessageW(dialog, WM_COMMAND, name.empty() ? IDCANCEL : IDOK, 0);
        }
    }

    const std::wstring kBox = L"frmBox", kInput = L"frmVstup";
    std::deque<int> answers_;
    std::deque<std::wstring> names_;
    std::deque<std::optional<std::wstring>> texts_;
    std::wstring closed_;
    bool closesMenus_ = false;
    std::set<HWND> answered_;  // input boxes and dialogs that are open
    int patience_ = 0;         // looks at a dialog that stays
    Timer timer_;
};

}  // namespace tunovka
