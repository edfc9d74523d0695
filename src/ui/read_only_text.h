#pragma once

#include "ui/window.h"

namespace tunovka {

// A text that can be read, selected and copied but not changed, on a plain ground. Enter, Escape
// and Tab are left to the form.
class ReadOnlyText : public Window {
  public:
    struct ReadOnlyTextArgs {
        std::wstring name;
        std::wstring text;
        Window* parent;
        Color ground;
        bool wraps = false;      // several lines, broken where they do not fit; else one line
        bool scrollBar = false;  // of a text that wraps
        bool visible = true;
    };

    explicit ReadOnlyText(const ReadOnlyTextArgs& args);

    // Takes the message font of its screen, after the dpi has changed.
    void applyFont();
    // Height in pixels that the whole text takes when the control is `width` pixels wide; the
    // control is left at that width.
    int heightAt(int width);

    int focusGap() const override { return 3; }  // its letters fill it

  protected:
    std::optional<LRESULT> onMessage(UINT message, WPARAM wparam, LPARAM lparam) override;
    HBRUSH onColors(HDC dc) override;

  private:
    Color ground_;
    HFONT font_ = nullptr;
};

}  // namespace tunovka
