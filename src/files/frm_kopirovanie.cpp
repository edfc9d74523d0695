#include "files/frm_kopirovanie.h"

#include <oleacc.h>

#include <utility>

#include "core/disk_questions.h"
#include "core/handle.h"
#include "core/paths.h"
#include "core/text.h"
#include "ui/painting.h"

namespace tunovka {
namespace {

// Sizes in 96ths of an inch.
constexpr Size kSize{400, 140};
constexpr int kMargin = 16;
constexpr int kGap = 8;
constexpr int kPercentWidth = 44;
constexpr int kStripHeight = 14;
constexpr int kButtonWidth = 88;

constexpr DWORD kShortCopy = 400;  // milliseconds that a copy may take without a window
constexpr DWORD kLeftAfter = 50;   // milliseconds after which stopped work is left to itself
constexpr DWORD kLook = 50;        // milliseconds

constexpr wchar_t kTitle[] = L"Kopírovanie súboru";

int underWay = 0;  // how many files are worked on

// Calls a routine on the windows' thread, from another one, and waits for its end.
void callOnLoop(std::function<void()> routine) {
    const auto ended = std::make_shared<KernelHandle>(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    postToLoop([ended, routine = std::move(routine)] {
        guarded(routine);
        SetEvent(ended->get());
    });
    WaitForSingleObject(ended->get(), INFINITE);
}

}  // namespace

frmkopirovanie::frmkopirovanie(const Form& owner, const std::wstring& name)
    : Form({.name = L"frmkopirovanie",
            .title = kTitle,
            .size = kSize,
            .owner = owner.handle(),
            .closer = nullptr}),
      lblsubor({.name = L"lblsubor", .caption = name, .parent = this, .format = DT_PATH_ELLIPSIS}),
      lblpercenta({.name = L"lblpercenta", .parent = this, .format = DT_RIGHT}),
      PicProgres({.name = L"PicProgres",
                  .text = L"Priebeh kopírovania",
                  .parent = this,
                  .role = ROLE_SYSTEM_PROGRESSBAR}),
      Izastavit(captionButton(L"Izastavit", L"Zastaviť", this)) {
    PicProgres.value = [this] { return lblpercenta.text(); };
    PicProgres.onPaint = [this](HDC dc, Size size) {
        paintStrip(dc, size, {0, 0, MulDiv(size.width, percent_, 100), size.height});
    };
    Izastavit.onClick = [this] { stopped_ = true; };
    layoutCentred();
}

void frmkopirovanie::showProgress(std::uint64_t done, std::uint64_t total) {
    const int percent = total == 0 ? 100 : static_cast<int>(done * 100 / total);
    if (percent == percent_) return;
    percent_ = percent;
    lblpercenta.setText(decimal(percent) + L" %");
    PicProgres.showValue();
}

bool frmkopirovanie::queryUnload() {
    stopped_ = true;
    return false;
}

Size frmkopirovanie::arrange(int top) {
    const int margin = scaled(kMargin), gap = scaled(kGap);
    const int inner = scaled(kSize.width);
    const int width = inner - 2 * margin;
    const int line = Skin::fontHeight(dpi());
    top += margin;

    const int percents = scaled(kPercentWidth);
    lblsubor.setBounds({margin, top, width - percents - gap, line});
    lblpercenta.setBounds({inner - margin - percents, top, percents, line});
    top += line + gap;
    PicProgres.setBounds({margin, top, width, scaled(kStripHeight)});
    top += scaled(kStripHeight) + margin;
    const int button = scaled(kButtonWidth), height = buttonHeight();
    Izastavit.setBounds({(inner - button) / 2, top, button, height});
    return {inner, top + height + margin};
}

std::optional<LRESULT> frmkopirovanie::onMessage(UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_MOUSEACTIVATE) return MA_NOACTIVATE;
    return Form::onMessage(message, wparam, lparam);
}

CopyWatch::CopyWatch(Form& form, std::wstring path, CloseFile closeFile)
    : form_(form), path_(std::move(path)), closeFile_(std::move(closeFile)) {
    Timer1.onTick = [this] { Timer1_Tick(); };
    Timer1.setInterval(kLook);
    ++underWay;
}

CopyWatch::~CopyWatch() {
    --underWay;
    shared_->stopped = true;
}

bool CopyWatch::run(const std::function<bool(const TransferHooks&)>& work) {
    const auto progress = [shared = shared_](std::uint64_t done, std::uint64_t total) {
        shared->done = done;
        shared->total = total;
        return !shared->stopped;
    };
    const auto closeFile = [shared = shared_, closeFile = closeFile_](const std::wstring& path) {
        callOnLoop([=] {
            if (!shared->stopped) closeFile(path);
        });
    };
    const auto question = [work, hooks = TransferHooks{progress, closeFile}] {
        return work(hooks);
    };
    return askDisk(LoopHooks{yieldNow, [this] { return isLeft(); }}, question).value_or(false);
}

std::wstring CopyWatch::sessionBlock() {
    return underWay > 0 ? L"Pracuje sa so súborom." : L"";
}

void CopyWatch::Timer1_Tick() {
    const std::uint64_t done = shared_->done, total = shared_->total;
    if (!window_ && done < total && GetTickCount() - start_ > kShortCopy) {
        window_ = std::make_unique<frmkopirovanie>(form_, fileName(path_));
        window_->showProgress(done, total);
        window_->showInactive();
    }
    if (window_) window_->showProgress(done, total);
    isLeft();  // also while a box runs on top of the wait
}

// Stopped work is waited for a moment, so that nothing half made is seen.
bool CopyWatch::isLeft() {
    const bool stops = form_.isGivenUp() || (window_ && window_->isStopped());
    if (stops && !shared_->stopped.exchange(true)) stop_ = GetTickCount();
    return stops && GetTickCount() - stop_ > kLeftAfter;
}

}  // namespace tunovka
