#pragma once

#include <optional>
#include <string>

#include "ui/form.h"
#include "ui/image.h"
#include "ui/picture_box.h"

namespace tunovka {

// A window in the program's skin: a picture strip on top, which shows the title and drags the
// window, with the close picture, the rim and the ground. A fixed one takes the size that its
// content needs; a sizable one gives its content what there is.
class SkinnedForm : public Form {
  public:
    PictureBox& strip() { return strip_; }

  protected:
    explicit SkinnedForm(const FormArgs& args);

    // Places the controls below the strip, whose lower edge is at `top`, and returns the client
    // size that a fixed form then needs. Pixels.
    virtual Size arrange(int top) = 0;

    void onLayout() final;
    void onPaintGround(HDC dc, const RECT& area) const override;

    // Of a button with a caption, also with a large font. Pixels.
    int buttonHeight() const;

  private:
    int stripHeight() const;
    void paintTitle(HDC dc) const;
    void paintGrip(HDC dc, const RECT& area) const;

    PictureBox strip_;
    std::optional<Image> closer_, minimizer_;
};

}  // namespace tunovka
