#pragma once

#include <windows.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "core/multimedialny.h"
#include "core/non_copyable.h"
#include "ui/geometry.h"

namespace tunovka {

using MultiMedialny::Color;

class Form;

enum class MouseButton { None, Left, Right, Middle };

// What a screen reader is told of a control, beside what the system knows of every window.
struct AccessibleFacts {
    long role = 0;                     // ROLE_SYSTEM_...; 0 leaves role and state to the system
    std::optional<std::wstring> name;  // nullopt leaves it to the system, as with the value
    std::optional<std::wstring> value;
    long state = 0;       // STATE_SYSTEM_...; focus, visible and enabled are added
    std::wstring action;  // name of the default action, for a control that takes BM_CLICK
};

// The owner of one system window, of the program's own class or a system control, and the one place
// where its messages are routed: to onMessage() of its object, and what a control tells its parent
// back to the control. Nothing thrown there reaches the system.
class Window : public NonCopyable {
  public:
    struct Args {
        const wchar_t* name = L"";  // the control's name in the code, kept as "Tunovka.name"
        const wchar_t* className = nullptr;  // a system control to subclass, else our own
        std::wstring text;                   // the accessible name of a control without a text
        DWORD style = WS_CHILD;
        DWORD exStyle = 0;
        bool visible = true;
        bool tabStop = false;
        Window* parent = nullptr;
        HWND owner = nullptr;  // of a top-level window
        Rect bounds;           // device pixels
    };

    virtual ~Window();

    HWND handle() const { return handle_; }

    const std::wstring& name() const { return name_; }
    Form& form() const { return *form_; }  // that the control lies on

    Rect bounds() const;  // within the parent's client area; of a form, on the screen
    Size clientSize() const;
    Rect clientArea() const { return {0, 0, clientSize().width, clientSize().height}; }
    void setBounds(const Rect& bounds);
    void setVisible(bool visible);
    bool isVisible() const;  // its own flag, also while a parent is hidden
    void setEnabled(bool enabled) { EnableWindow(handle_, enabled); }
    bool isEnabled() const { return IsWindowEnabled(handle_); }
    bool hasFocus() const { return handle_ && GetFocus() == handle_; }
    void focus() {
        if (handle_) SetFocus(handle_);
    }
    // Its turn for the Tab key: after a sibling, or first or last (HWND_TOP, HWND_BOTTOM).
    void setTabPlace(HWND after);
    void invalidate() {
        if (handle_) InvalidateRect(handle_, nullptr, FALSE);
    }

    std::wstring text() const;
    void setText(const std::wstring& text);

    // What is shown when the pointer rests over a control of the program's own; "" for nothing.
    void setTip(const std::wstring& text) { tip_ = text; }

    // What a screen reader is told; nullopt leaves it to the system.
    virtual std::optional<AccessibleFacts> describe() const;
    // The name that it reads out for a control whose text is something else; "" for none.
    void setAccessibleName(const std::wstring& name) { accessibleName_ = name; }

    // True for a control of the system's, which cannot show its focus within.
    bool isSystemControl() const { return original_ != DefWindowProcW; }
    // Room between a system control and the frame that shows its focus, in 96ths of an inch.
    virtual int focusGap() const { return 0; }

    // Gives a control of the system's the font of its screen, when that has changed.
    void applyFont();

    // What a window of the program's own shows, over what lies behind it.
    virtual void paint(HDC) const {}

    // The one scaling function: a size in 96ths of an inch as pixels of this window's screen.
    int scaled(int units) const;
    int dpi() const;  // of its form

    bool isUnderPointer() const;  // its client area
    Point toScreen(Point point) const;
    Point fromScreen(Point point) const;

    std::function<void()> onCreated;

  protected:
    // A control. Its system window is created by the first setBounds() that gives it an area: it
    // need not be moved there. Until then it has its arguments, and other requests do nothing.
    explicit Window(const Args& args);
    // A form, which creates its system window itself.
    explicit Window(Form* form) : form_(form) {}
    void create(const Args& args);
    // The system window of a control is there.
    virtual void prepare() {}
    // It has got another font: what else goes with that changes, too.
    virtual void onFont() {}

    LRESULT send(UINT message, WPARAM wparam = 0, LPARAM lparam = 0) const {
        return SendMessageW(handle_, message, wparam, lparam);
    }
    LRESULT send(UINT message, WPARAM wparam, const void* data) const {
        return send(message, wparam, reinterpret_cast<LPARAM>(data));
    }

    // Answers a message; nullopt leaves it to the window's own default.
    virtual std::optional<LRESULT> onMessage(UINT message, WPARAM wparam, LPARAM lparam);
    // What a control told its parent, brought back to the control.
    virtual std::optional<LRESULT> onNotify(NMHDR&) { return std::nullopt; }
    virtual std::optional<LRESULT> onCommand(WORD) { return std::nullopt; }
    // A control asks for its colours: set them in its device context, return the ground's brush.
    virtual HBRUSH onColors(HDC) { return nullptr; }

    // What the window does with a message that is left to it.
    LRESULT defaultProcedure(UINT message, WPARAM wparam, LPARAM lparam);

  private:
    void paintOver(HDC dc, HWND control) const;
    void createWaiting();
    static LRESULT CALLBACK ownProcedure(HWND, UINT, WPARAM, LPARAM);
    LRESULT route(UINT message, WPARAM wparam, LPARAM lparam);
    std::optional<LRESULT> answer(UINT message, WPARAM wparam, LPARAM lparam);
    std::optional<LRESULT> reflect(UINT message, WPARAM wparam, LPARAM lparam);

    HWND handle_ = nullptr;
    std::unique_ptr<Args> waiting_;  // until the window is created
    Form* form_;
    WNDPROC original_ = DefWindowProcW;  // of a system control its own
    HFONT font_ = nullptr;               // that a system control has been given
    std::wstring name_, accessibleName_, tip_;
};

// Loads the library of the system's controls, with the first of them: that is a good part of a
// program's start, and the explorer's first picture needs none.
void prepareSystemControls();

// Dots per inch of a window's screen, or of the system where Windows is too old.
int dpiOf(HWND window);

// The Window object of a system window, nullptr when it is none of the program's.
Window* windowOf(HWND handle);

// Rectangles and points as the system counts them, and back.
RECT toRECT(const Rect& rect);
Rect rectOf(const RECT& rect);
Point pointOf(POINT point);

// What a message tells of a button of the mouse, and where: a double click is a press, too.
bool isPress(UINT message);
bool isRelease(UINT message);
Point pointOf(LPARAM lparam);
MouseButton buttonOf(UINT message);

// Answers WM_GETOBJECT for the inner part of a window: the object that it hands out asks describe()
// each time. nullopt for another part, or where the system has no accessibility support.
std::optional<LRESULT> accessibleAnswer(HWND window, WPARAM wparam, LPARAM lparam);

}  // namespace tunovka
