#pragma once

#include <windows.h>

#include <string>

namespace tunovka {

// Counts, on the thread of the windows, how often that thread has come to rest: a timer's message
// comes after every other one, in the loops of menus, dialogs and drags as well.
class Pulse {
  public:
    Pulse();  // on the thread of the windows
    ~Pulse();
    Pulse(const Pulse&) = delete;
    Pulse& operator=(const Pulse&) = delete;

    static constexpr DWORD kPatience = 60'000;  // ms that a busy machine may need for anything

    // From another thread: waits until everything sent so far has been dealt with; false when the
    // windows do not answer.
    static bool awaitRest();

  private:
    UINT_PTR timer_;
};

// What the hands raise when the windows do not answer any more.
struct Hangs {};

// A person's hands on mouse and keyboard, used from another thread than that of the windows. The
// system gets what it would get from the hardware; each motion is over when the windows have taken
// it in. Points are the screen's pixels.
class Hands {
  public:
    void click(POINT at, int times = 1);
    void clickRight(POINT at);
    void drag(POINT from, POINT to);
    void turnWheel(POINT at, int notches);
    void press(WORD key, WORD held = 0);  // with Shift, Ctrl or Alt held down
    void type(const std::wstring& text);

    // Lets the windows finish what was asked of them.
    void rest();

  private:
    void moveTo(POINT at);
    void button(DWORD flags, DWORD data = 0);
};

}  // namespace tunovka
