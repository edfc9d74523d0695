#include "ui/modal.h"

#include "core/loop.h"
#include "ui/form.h"

namespace tunovka {
namespace {

struct Search {
    HWND except;
    std::vector<HWND>& found;
};

BOOL CALLBACK collectEnabled(HWND window, LPARAM data) {
    auto& search = *reinterpret_cast<Search*>(data);
    if (window != search.except && IsWindowVisible(window) && IsWindowEnabled(window))
        search.found.push_back(window);
    return TRUE;
}

}  // namespace

ModalState::ModalState(HWND except) {
    Search search{except, disabled_};
    EnumThreadWindows(GetCurrentThreadId(), collectEnabled, reinterpret_cast<LPARAM>(&search));
    for (const HWND window : disabled_) EnableWindow(window, FALSE);
}

ModalState::~ModalState() {
    for (const HWND window : disabled_) EnableWindow(window, TRUE);
}

namespace {

// The wheel turns what lies under the pointer, wherever the focus is.
void aimWheel(MSG& message) {
    const Point at = pointOf(message.lParam);
    const HWND under = WindowFromPoint({at.x, at.y});
    const auto* form = dynamic_cast<Form*>(windowOf(GetAncestor(under, GA_ROOT)));
    if (form && form->isEnabled()) message.hwnd = under;
}

}  // namespace

bool filterMessage(MSG& message) {
    if (message.message == WM_MOUSEWHEEL) aimWheel(message);
    if (message.message < WM_KEYFIRST || message.message > WM_KEYLAST) return false;
    const HWND top = message.hwnd ? GetAncestor(message.hwnd, GA_ROOT) : nullptr;
    auto* form = dynamic_cast<Form*>(windowOf(top));
    if (!form) return false;
    if (message.message == WM_KEYDOWN && form->isEnabled()) {
        bool used = false;
        const Form::Depth alive(form);
        guarded([&] { used = form->onShortcut(static_cast<WORD>(message.wParam)); });
        if (used) return true;
    }
    return IsDialogMessageW(top, &message);
}

}  // namespace tunovka
