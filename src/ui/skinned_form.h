#pragma once

#include <optional>
#include <string>

#include "ui/form.h"
#include "ui/image.h"
#include "ui/picture_box.h"

namespace tunovka {

// The picture strip on top of a window: shows its title, and a press on it drags the window.
class TitleStrip : public PictureBox {
  public:
    TitleStrip(const wchar_t* name, const std::wstring& title, Form& form);

    void setText(const std::wstring& title) override;
    std::optional<AccessibleFacts> describe() const override;

    std::function<void()> onRightUp;
};

// A window in the program's skin: a title strip with the close picture, the rim and the ground. A
// fixed one takes the size that its content needs; a sizable one gives its content what there is.
class SkinnedForm : public Form {
  public:
    struct SkinArgs {
        const wchar_t* name;   // frmPrieskumnik
        std::wstring title;    // of the task bar; on the strip a blank stands before it
        Size size;             // at first, in 96ths of an inch
        Size minimum = {};     // in 96ths of an inch, of a sizable form; of a fixed one nothing
        HWND owner = nullptr;  // a form with an owner has no place of its own in the task bar
        const wchar_t* strip = L"PicZahlavie";  // names of the controls
        const wchar_t* closer = L"IZavri";      // nullptr for a form that has no such picture
        const wchar_t* minimizer = nullptr;
    };

    TitleStrip& strip() { return strip_; }
    Image& closer() { return *closer_; }
    Image& minimizer() { return *minimizer_; }

  protected:
    explicit SkinnedForm(const SkinArgs& args);

    // Places the controls below the strip, whose lower edge is at `top`, and returns the client
    // size that a fixed form then needs. Pixels.
    virtual Size arrange(int top) = 0;

    void onLayout() final;
    void onPaintGround(HDC dc, const RECT& area) const override;

    // Of a button with a caption, also with a large font. Pixels.
    int buttonHeight() const;

    // For the end of a fixed form's construction: lays it out and centres it over its owner.
    void layoutCentred();

  private:
    int stripHeight() const;
    void placeStrip();
    void paintGrip(HDC dc, const RECT& area) const;

    TitleStrip strip_;
    std::optional<Image> closer_, minimizer_;
};

}  // namespace tunovka
