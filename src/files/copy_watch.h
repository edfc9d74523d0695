#pragma once

#include <windows.h>

#include <memory>
#include <string>

#include "core/file_system.h"
#include "ui/form.h"

namespace tunovka {

class frmkopirovanie;

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
