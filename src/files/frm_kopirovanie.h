#pragma once

#include "ui/form.h"
#include "ui/image.h"
#include "ui/label.h"
#include "ui/picture_box.h"

namespace tunovka {

// Shows how far a long copy is and takes the wish to stop it. The other windows stay usable.
class frmkopirovanie : public Form {
  public:
    // `owner` is the form over which it lies, `name` the file's name.
    frmkopirovanie(const Form& owner, const std::wstring& name);

    void showProgress(std::uint64_t done, std::uint64_t total);  // bytes
    bool isStopped() const { return stopped_; }

  protected:
    void onLayout() override;
    void onCancel() override { stopped_ = true; }
    // Whoever copies closes it, when the copy has ended.
    bool queryUnload() override;
    void onPaintGround(HDC dc, const RECT& area) const override;

  private:
    void paintProgress(HDC dc, Size size) const;

    int percent_ = -1;
    bool stopped_ = false;
    TitleStrip PicZahlavie;
    Label lblsubor, lblpercenta;
    PictureBox PicProgres;
    Image Izastavit;
};

}  // namespace tunovka
