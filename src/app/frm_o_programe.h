#pragma once

#include "ui/form.h"
#include "ui/image.h"
#include "ui/label.h"
#include "ui/picture_box.h"

namespace tunovka {

// The about window: the program's picture, name, version and slogan.
class frmOprograme : public Form {
  public:
    explicit frmOprograme(HWND owner);

    TitleStrip Pic;
    Image Tlacitko;
    PictureBox PicLogo;
    Label lblnazov, lblverzia, lblslogan;

  protected:
    void onLayout() override;
    void onAccept() override { unload(); }
    void onCancel() override { unload(); }
    void onPaintGround(HDC dc, const RECT& area) const override;

  private:
    void Tlacitko_MouseUp(MouseButton button);

    RECT card_{};
};

}  // namespace tunovka
