#pragma once

#include <functional>

#include "ui/window.h"

namespace tunovka {

// A canvas: its owner paints it and takes its mouse. The mouse is captured while a button is held,
// so that moves and the release reach it wherever the pointer is.
class PictureBox : public Window {
  public:
    struct PictureBoxArgs {
        std::wstring name;
        std::wstring text;  // the accessible name
        Window* parent;
        bool visible = true;
        bool container = false;  // other controls lie on it
    };

    explicit PictureBox(const PictureBoxArgs& args);

    const wchar_t* cursor = nullptr;  // a system cursor in place of the arrow

    std::function<void(HDC dc, Size size)> onPaint;
    std::function<void(MouseButton, Point)> onMouseDown;
    std::function<void(MouseButton, Point)> onMouseMove;  // the button that is held
    std::function<void(MouseButton, Point)> onMouseUp;

  protected:
    std::optional<LRESULT> onMessage(UINT message, WPARAM wparam, LPARAM lparam) override;
};

// The picture strip on top of a window: shows a title and drags the window.
class TitleStrip : public PictureBox {
  public:
    TitleStrip(const std::wstring& name, const std::wstring& title, Window& parent);

    void setText(const std::wstring& title) override;

    std::function<void()> onRightUp;
};

// Hands the pointer's drag to the system, which moves the window as if by its caption.
void dragWindow(const Form& form);

}  // namespace tunovka
