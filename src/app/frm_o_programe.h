#pragma once

#include "ui/form.h"
#include "ui/label.h"
#include "ui/picture_box.h"

namespace tunovka {

// The about window: the program's picture, name, version and slogan.
class frmOprograme : public Form {
  public:
    explicit frmOprograme(HWND owner);

    PictureBox PicLogo;
    Label lblnazov, lblverzia, lblslogan;

  protected:
    Size arrange(int stripBottom) override;
    void onAccept() override { unload(); }
    void onCancel() override { unload(); }
    void onPaintGround(HDC dc) const override;

  private:
    RECT card_{};
};

}  // namespace tunovka
