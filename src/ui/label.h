#pragma once

#include "ui/skin.h"
#include "ui/window.h"

namespace tunovka {

// A text on the form's ground; its window text is its caption.
class Label : public Window {
  public:
    struct LabelArgs {
        const wchar_t* name;
        std::wstring caption = {};
        Window* parent;
        UINT format = DT_LEFT;  // DrawText's alignment and ellipsis
        Skin::Font font = Skin::Font::Text;
        Color color = MultiMedialny::palette().LabelForeColor;
        bool visible = true;
        bool status = false;  // the line that tells what is selected
        bool wraps = false;   // lines break at words, from the top; else one centred line
    };

    explicit Label(const LabelArgs& args);

    // Size of the caption in pixels: on one line, or wrapped at a width when that is positive.
    Size measured(int width = 0) const;

    std::optional<AccessibleFacts> describe() const override;
    void paint(HDC dc) const override;

  protected:
    std::optional<LRESULT> onMessage(UINT message, WPARAM wparam, LPARAM lparam) override;

  private:
    UINT format_;
    Skin::Font font_;
    bool wraps_, status_;
    Color color_;
};

}  // namespace tunovka
