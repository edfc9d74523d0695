#pragma once

#include <optional>

#include "ui/window.h"

namespace tunovka {

// The system's field, without a frame of its own: a text to be read, selected and copied on a plain
// ground, or one line to be typed. Enter and Escape are left to the form, and so is Tab.
class TextField : public Window {
  public:
    struct TextFieldArgs {
        const wchar_t* name;
        std::wstring text;
        Window* parent;
        std::optional<Color> ground = {};  // of a text to be read; nullopt for a line to be typed
        bool wraps = false;                // several lines, broken where they do not fit
        bool scrollBar = false;            // of a text that wraps
        bool visible = true;
    };

    explicit TextField(const TextFieldArgs& args);

    // Height in pixels that the whole text takes at that width, which the control is left at.
    int heightAt(int width);
    // Selects so many letters at its start. Only once it has its width: it scrolls to their end.
    void selectStart(std::size_t letters);

    int focusGap() const override { return 3; }  // its letters fill it

  protected:
    std::optional<LRESULT> onMessage(UINT message, WPARAM wparam, LPARAM lparam) override;
    HBRUSH onColors(HDC dc) override;

  private:
    void onFont() override;

    std::optional<Color> ground_;
};

}  // namespace tunovka
