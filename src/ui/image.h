#pragma once

#include <functional>

#include "ui/skin.h"
#include "ui/window.h"

namespace tunovka {

// A button of two pictures, one shown while it is pressed by the mouse, Space or Enter.
class Image : public Window {
  public:
    struct ImageArgs {
        const wchar_t* name;
        std::wstring text;  // the accessible name and tool tip
        Window* parent;
        const wchar_t* normal;  // picture keys
        const wchar_t* pressed;
        std::wstring caption = {};  // drawn over the picture, which then stretches
        bool visible = true;
        bool tabStop = true;
        bool anyButton = false;  // of the mouse presses it, not the left one alone
    };

    explicit Image(const ImageArgs& args);

    std::function<void()> onPress;
    std::function<void()> onClick;  // at the release, wherever the pointer then is

    // Size that shows the pictures as they are drawn, in pixels.
    Size naturalSize() const;

    std::optional<AccessibleFacts> describe() const override;
    void paint(HDC dc) const override;
    bool isPressed() const { return held_ != MouseButton::None; }
    Skin::Look look() const;

  protected:
    std::optional<LRESULT> onMessage(UINT message, WPARAM wparam, LPARAM lparam) override;

  private:
    void press(MouseButton button);
    void release(MouseButton button);
    void cancelPress();
    void showState();
    void pointerMoved(Point at);

    std::wstring normalKey_, pressedKey_, caption_;
    MouseButton held_ = MouseButton::None;
    bool anyButton_;
    bool byKey_ = false;    // it is held by a key
    bool pointed_ = false;  // the pointer is over it
};

// A button with a caption, for a box.
inline Image::ImageArgs captionButton(const wchar_t* name, const std::wstring& caption,
                                      Window* parent) {
    return {.name = name,
            .text = caption,
            .parent = parent,
            .normal = L"buton1",
            .pressed = L"buton2",
            .caption = caption};
}

}  // namespace tunovka
