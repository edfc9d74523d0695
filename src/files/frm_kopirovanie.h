#pragma once

#include <windows.h>

#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "core/file_system.h"
#include "core/loop.h"
#include "ui/form.h"
#include "ui/label.h"

namespace tunovka {

// Shows how far a long copy is and takes the wish to stop it. It never takes the focus, the other
// windows stay usable, and it stays usable itself while a box is open.
class frmkopirovanie : public Form {
  public:
    // `owner` is the form over which it lies, `name` the file's name.
    frmkopirovanie(const Form& owner, const std::wstring& name);

    void showProgress(std::uint64_t done, std::uint64_t total);  // bytes
    bool isStopped() const { return stopped_; }

    bool staysUsable() const override { return true; }

  protected:
    Size arrange(int top) override;
    std::optional<LRESULT> onMessage(UINT message, WPARAM wparam, LPARAM lparam) override;
    void onCancel() override { stopped_ = true; }
    // Whoever copies closes it, when the copy has ended.
    bool queryUnload() override;

  private:
    int percent_ = -1;
    bool stopped_ = false;
    Label lblsubor, lblpercenta;
    PictureBox PicProgres;
    Image Izastavit;
};

// Work on a file that a form started, done by a worker while the windows live. A copy that takes
// longer than a moment gets a window with its progress, gone at the copy's end.
class CopyWatch : NonCopyable {
  public:
    using CloseFile = std::function<void(const std::wstring& path)>;

    // `closeFile` is called on the windows' thread when the work comes to a file.
    CopyWatch(Form& form, std::wstring path, CloseFile closeFile);
    ~CopyWatch();

    // What the work gives back; false when the person stopped it, in the window, by Escape or by
    // closing the form. Stopped work that does not end at once is left to itself.
    bool run(const std::function<bool(const TransferHooks& hooks)>& work);

    // Why the session must not end now, in the person's words; "" while no work is under way.
    static std::wstring sessionBlock();

  private:
    // What the worker and the windows tell each other.
    struct Shared {
        std::atomic<std::uint64_t> done = 0, total = 0;  // bytes
        std::atomic<bool> stopped = false;
    };
    void Timer1_Tick();
    bool isLeft();

    Form& form_;
    std::wstring path_;
    CloseFile closeFile_;
    DWORD start_ = GetTickCount();
    DWORD stop_ = 0;  // when it was stopped
    std::shared_ptr<Shared> shared_ = std::make_shared<Shared>();
    std::unique_ptr<frmkopirovanie> window_;
    Timer Timer1;
};

}  // namespace tunovka
