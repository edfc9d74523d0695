#include "files/copy_watch.h"

#include <utility>

#include "core/events.h"
#include "core/paths.h"
#include "files/frm_kopirovanie.h"

namespace tunovka {
namespace {

constexpr DWORD kMoment = 400;  // milliseconds before the window comes

}  // namespace

CopyWatch::CopyWatch(Form& form, std::wstring path) : form_(form), path_(std::move(path)) {}

CopyWatch::~CopyWatch() = default;

bool CopyWatch::step(std::uint64_t done, std::uint64_t total) {
    if (!window_ && done < total && GetTickCount() - start_ > kMoment) {
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
