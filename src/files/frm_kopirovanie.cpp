#include "files/frm_kopirovanie.h"

#include <oleacc.h>

#include <utility>

#include "core/loop.h"
#include "core/paths.h"
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
constexpr int kButtonHeight = 26;

constexpr DWORD kShortCopy = 400;  // milliseconds that a copy may take without a window

constexpr wchar_t kTitle[] = L"Kopírovanie súboru";

}  // namespace

frmkopirovanie::frmkopirovanie(const Form& owner, const std::wstring& name)
    : SkinnedForm({.name = L"frmkopirovanie",
                   .title = kTitle,
                   .size = kSize,
                   .owner = owner.handle(),
                   .closer = nullptr}),
      lblsubor({.name = L"lblsubor", .caption = name, .parent = this, .format = DT_PATH_ELLIPSIS}),
      lblpercenta({.name = L"lblpercenta", .caption = L"", .parent = this, .format = DT_RIGHT}),
      PicProgres({.name = L"PicProgres",
                  .text = L"Priebeh kopírovania",
                  .parent = this,
                  .role = ROLE_SYSTEM_PROGRESSBAR}),
      Izastavit({.name = L"Izastavit",
                 .text = L"Zastaviť",
                 .parent = this,
                 .normal = L"buton1",
                 .pressed = L"buton2",
                 .caption = L"Zastaviť"}) {
    PicProgres.value = [this] { return lblpercenta.text(); };
    PicProgres.onPaint = [this](HDC dc, Size size) { PicProgres_Paint(dc, size); };
    Izastavit.onClick = [this] { stopped_ = true; };
    layoutCentred();
    Izastavit.focus();
}

void frmkopirovanie::showProgress(std::uint64_t done, std::uint64_t total) {
    const int percent = total == 0 ? 100 : static_cast<int>(done * 100 / total);
    if (percent == percent_) return;
    percent_ = percent;
    lblpercenta.setText(std::to_wstring(percent) + L" %");
    PicProgres.showValue();
}

bool frmkopirovanie::queryUnload() {
    stopped_ = true;
    return false;
}

void frmkopirovanie::PicProgres_Paint(HDC dc, Size size) const {
    paintStrip(dc, size, {0, 0, MulDiv(size.width, percent_, 100), size.height});
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
    const int button = scaled(kButtonWidth), height = scaled(kButtonHeight);
    Izastavit.setBounds({(inner - button) / 2, top, button, height});
    return {inner, top + height + margin};
}

CopyWatch::CopyWatch(Form& form, std::wstring path) : form_(form), path_(std::move(path)) {}

CopyWatch::~CopyWatch() = default;

bool CopyWatch::step(std::uint64_t done, std::uint64_t total) {
    if (!window_ && done < total && GetTickCount() - start_ > kShortCopy) {
        window_ = std::make_unique<frmkopirovanie>(form_, fileName(path_));
        window_->showProgress(done, total);
        window_->show();
    }
    if (window_) window_->showProgress(done, total);
    yieldToEvents();
    return !form_.isClosing() && !(window_ && window_->isStopped());
}

CopyProgress watchedBy(Form& form, const std::wstring& path) {
    const auto watch = std::make_shared<CopyWatch>(form, path);
    return [watch](std::uint64_t done, std::uint64_t total) { return watch->step(done, total); };
}

}  // namespace tunovka
