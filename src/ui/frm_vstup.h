#pragma once

#include "ui/form.h"
#include "ui/image.h"
#include "ui/input_box.h"
#include "ui/label.h"
#include "ui/picture_box.h"

namespace tunovka {

// The window behind askForText().
class frmVstup : public Form {
  public:
    frmVstup(const Form& owner, const InputRequest& request);

    const std::wstring& answer() const { return answer_; }

  protected:
    void onLayout() override;
    void onAccept() override;
    void onCancel() override { unload(); }
    void onPaintGround(HDC dc, const RECT& area) const override;

  private:
    class Field : public Window {
      public:
        Field(Window& parent, const InputRequest& request);
        void applyFont();
        void selectStart(std::size_t letters);
        int focusGap() const override;
    };

    std::wstring answer_;
    TitleStrip PicZahlavie;
    Image IZavri;
    Label lblotazka;
    Field txtodpoved;
    Image Iano, Izrusit;
};

}  // namespace tunovka
