#pragma once

#include <windows.h>

#include <memory>
#include <string>

#include "core/file_system.h"
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
    void PicProgres_Paint(HDC dc, Size size) const;
    void Izastavit_MouseUp(MouseButton button);

    int percent_ = -1;
    bool stopped_ = false;
    TitleStrip PicZahlavie;
    Label lblsubor, lblpercenta;
    PictureBox PicProgres;
    Image Izastavit;
};

// Keeps the windows alive during a copy that a form started. A copy that takes longer than a
// moment gets a window with its progress, gone at the copy's end.
class CopyWatch {
  public:
    CopyWatch(Form& form, std::wstring path);
    ~CopyWatch();

    // Lets events run. False when the person wants to stop the copy or has closed the form.
    bool step(std::uint64_t done, std::uint64_t total);

  private:
    Form& form_;
    std::wstring path_;
    DWORD start_ = GetTickCount();
    std::unique_ptr<frmkopirovanie> window_;
};

// The same as the parameter of a copy.
CopyProgress watchedBy(Form& form, const std::wstring& path);

}  // namespace tunovka
