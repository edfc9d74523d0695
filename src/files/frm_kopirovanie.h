#pragma once

#include <windows.h>

#include <memory>
#include <string>

#include "core/file_system.h"
#include "ui/label.h"
#include "ui/skinned_form.h"

namespace tunovka {

// Shows how far a long copy is and takes the wish to stop it. The other windows stay usable.
class frmkopirovanie : public SkinnedForm {
  public:
    // `owner` is the form over which it lies, `name` the file's name.
    frmkopirovanie(const Form& owner, const std::wstring& name);

    void showProgress(std::uint64_t done, std::uint64_t total);  // bytes
    bool isStopped() const { return stopped_; }

  protected:
    Size arrange(int top) override;
    void onCancel() override { stopped_ = true; }
    // Whoever copies closes it, when the copy has ended.
    bool queryUnload() override;

  private:
    void PicProgres_Paint(HDC dc, Size size) const;

    int percent_ = -1;
    bool stopped_ = false;
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
