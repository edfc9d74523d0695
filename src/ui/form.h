#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "core/loop.h"
#include "ui/image.h"
#include "ui/picture_box.h"

namespace tunovka {

// Switches every other window of the program off for as long as it lives.
class ModalState : NonCopyable {
  public:
    explicit ModalState(HWND except);
    ~ModalState();

  private:
    static BOOL CALLBACK disable(HWND window, LPARAM modal);

    HWND except_;
    std::vector<HWND> disabled_;
};

// A top-level window in the program's skin: a picture strip on top, which shows the title and drags
// the window, with the close picture, the rim and the ground. A sizable one is sized by its border.
//
// A form counts how deep it is in its own handlers and loops: unload() hides it, and it is
// destroyed from the message loop once that count is back at zero.
class Form : public Window {
  public:
    struct FormArgs {
        const wchar_t* name;   // frmPrieskumnik
        std::wstring title;    // the window's own text, seen by the task bar
        Size size;             // client size in 96ths of an inch
        Size minimum{};        // least size in 96ths of an inch, which makes it sizable
        HWND owner = nullptr;  // a form that has one has no place of its own in the task bar
        const wchar_t* strip = L"PicZahlavie";
        const wchar_t* closer = L"IZavri";  // nullptr for a form that has no such picture
        const wchar_t* minimizer = nullptr;
    };

    // A text that other windows match, "" unless set.
    std::wstring tag;

    // Asks to close and closes; false when the form refused.
    bool unload();
    bool isClosing() const { return closing_; }

    void show();
    void showInactive();  // without taking the focus
    void minimize() { ShowWindow(handle(), SW_MINIMIZE); }
    // Shows the form with every other window of the program switched off, until it is unloaded.
    void showModal();

    // Places the form, before it is shown, beside the program's main window or over it.
    void placeBesideOthers();
    // Gives the client area a size in pixels, keeping the place.
    void setClientSize(Size size);

    PictureBox& strip() { return strip_; }

    // True while a long command of the form runs, over whose data no other command may go.
    bool isBusy() const { return busy_ > 0; }

    // True when the person gave the running command up: by Escape or by closing the form.
    bool isGivenUp() const { return closing_ || givenUp_; }

    // True for a form that boxes do not switch off.
    virtual bool staysUsable() const { return false; }

    // Keeps the form alive: a handler of one of its windows or a loop runs.
    class Depth : NonCopyable {
      public:
        explicit Depth(Form* form) : form_(form) { ++form_->depth_; }
        ~Depth() { form_->leave(); }

      private:
        Form* form_;
    };

    int dpiOfForm() const { return dpi_; }
    void paint(HDC dc) const override;
    // True where the border of a sizable form is grasped; controls let the mouse through there.
    bool isOnBorder(Point screen) const { return hitTestBorder(screen).has_value(); }
    // Shows a control's tip when the pointer, which has moved over it, rests there.
    void offerTip(const Window& control, const std::wstring& tip, WPARAM keys, LPARAM place);
    // The focus has come to a control of the system's or left it: its frame is painted again.
    void repaintAround(const Window& control);
    std::optional<AccessibleFacts> describe() const override;

    // Marks a long command; keeps the form alive as well.
    class Busy {
      public:
        explicit Busy(Form& form) : depth_(&form), form_(form) {
            if (form_.busy_++ == 0) form_.givenUp_ = false;
        }
        ~Busy() { --form_.busy_; }

      private:
        Depth depth_;
        Form& form_;
    };

  protected:
    explicit Form(const FormArgs& args);

    // May refuse to close by returning false.
    virtual bool queryUnload() { return true; }
    // Why the session must not end now, in the person's words; "" when it may.
    virtual std::wstring sessionBlock() const { return {}; }
    // The form closes now: stop timers and loops; its controls still exist.
    virtual void onUnload() {}
    // Places the controls below the strip, whose lower edge is at `top`, on every change of size or
    // dpi, and returns the client size that a fixed form then needs. Pixels.
    virtual Size arrange(int /*top*/) { return clientSize(); }
    // The window became the active one; called from the message loop.
    virtual void onActivated() {}
    // What lies on the ground, behind the controls.
    virtual void onPaintGround(HDC) const {}
    // Enter and Escape, where the control with the focus does not want them itself.
    virtual void onAccept() {}
    virtual void onCancel() {}
    // A key before anybody else sees it; true when the form has used it.
    virtual bool onShortcut(WORD key) { return (void)key, false; }
    // The menu key, where the control with the focus has no menu of its own.
    virtual void onMenuKey() {}

    std::optional<LRESULT> onMessage(UINT message, WPARAM wparam, LPARAM lparam) override;

    void layout();
    // Lays the form out and places it over its owner, centred, or in the middle of the screen.
    void layoutCentred();
    // Of the screen that the form lies on, without the task bar.
    Rect workArea() const;
    // Of a button with a caption, also with a large font. Pixels.
    int buttonHeight() const;
    bool isSizable() const { return args_.minimum != Size{}; }

  private:
    friend class Forms;
    friend bool filterMessage(MSG& message);
    Rect centred(Size size) const;
    std::optional<LRESULT> hitTestBorder(Point screen) const;
    void prepareStrip();
    int stripHeight() const;
    void layOutStrip();
    void paintTitle(HDC dc) const;
    void paintGrip(HDC dc, const RECT& area) const;
    void paintFocus(HDC dc) const;
    void blockSession(const std::wstring& reason) const;
    void leave();
    void close();

    FormArgs args_;
    PictureBox strip_;
    std::optional<Image> closer_, minimizer_;
    int dpi_ = 0;  // dots per inch, as the system told them last
    int depth_ = 0;
    int busy_ = 0;
    bool closing_ = false;
    bool givenUp_ = false;
    HWND lastFocus_ = nullptr;
    LoopSignal becameActive_;
    std::optional<ModalState> modal_;
    HWND tips_ = nullptr;  // the tool tips of its controls; the system destroys it with the form
};

// The window over which another one is opened: the program's active one, else the last that was,
// else the first that is loaded and seen. nullptr when there is none.
HWND activeForm();

// The loaded windows, in their order. With the last one's end the program is asked to quit.
class Forms {
  public:
    // Creates a form and owns it until it is unloaded.
    template <typename T, typename... Arguments>
    static T& load(Arguments&&... arguments) {
        auto form = std::make_unique<T>(std::forward<Arguments>(arguments)...);
        T& loaded = *form;
        adopt(std::move(form));
        return loaded;
    }

    static std::vector<Form*> loaded();  // without those that are closing
    static Form* find(const std::wstring& name);

    // Unloads every form whose tag begins so, in order; false as soon as one refuses.
    static bool unloadTagged(std::wstring_view start);

    // Unloads all that is left.
    static void unloadAll();

  private:
    static void adopt(std::unique_ptr<Form> form);
};

// Looks at a message before its window gets it: serves the form's shortcuts, Tab, Enter and Escape
// (true: used up), and sends the wheel to the window under the pointer.
bool filterMessage(MSG& message);

}  // namespace tunovka
