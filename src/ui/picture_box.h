#pragma once

#include <functional>

#include "ui/geometry.h"
#include "ui/window.h"

namespace tunovka {

// A canvas: its owner paints it and takes its mouse, which is captured while a button is held. One
// that stands for a value can have the focus and is moved by keys.
class PictureBox : public Window {
  public:
    struct PictureBoxArgs {
        const wchar_t* name;
        std::wstring text = {};  // the accessible name
        Window* parent;
        bool visible = true;
        bool container = false;  // other controls lie on it
        long role = 0;           // what a screen reader takes it for, ROLE_SYSTEM_...
        bool tabStop = false;
        bool rising = false;  // the value grows upwards
    };

    explicit PictureBox(const PictureBoxArgs& args);

    const wchar_t* cursor = nullptr;  // a system cursor in place of the arrow

    std::function<void(HDC dc, Size size)> onPaint;
    std::function<void(MouseButton, Point)> onMouseDown;
    std::function<void(MouseButton, Point)> onMouseMove;  // the button that is held
    std::function<void(MouseButton, Point)> onMouseUp;
    std::function<void()> onCaptureLost;       // the mouse was taken away: no release will come
    std::function<void(StripMove)> onMove;     // by a key
    std::function<void(int notches)> onWheel;  // away from the person is positive
    std::function<std::wstring()> value;       // as a screen reader tells it

    // Repaints after the value has changed, and tells screen readers.
    void showValue();

    std::optional<AccessibleFacts> describe() const override;
    void paint(HDC dc) const override {
        if (onPaint) onPaint(dc, clientSize());
    }

  protected:
    std::optional<LRESULT> onMessage(UINT message, WPARAM wparam, LPARAM lparam) override;

  private:
    bool takeKey(WORD key);
    bool takeWheel(int turned);

    long role_;
    bool rising_;
    bool pressed_ = false;
    int turned_ = 0;  // the part of a notch of the wheel that is not passed on yet
};

}  // namespace tunovka
