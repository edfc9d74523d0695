#include "ui/forms.h"

#include <algorithm>

#include "core/loop.h"
#include "core/text.h"

namespace tunovka {
namespace {

std::vector<std::unique_ptr<Form>>& all() {
    static std::vector<std::unique_ptr<Form>> forms;
    return forms;
}

}  // namespace

namespace {

HWND lastActive = nullptr;

bool isSeen(HWND window) {
    return dynamic_cast<Form*>(windowOf(window)) && IsWindowVisible(window) && !IsIconic(window);
}

}  // namespace

HWND activeForm() {
    for (const HWND form : {GetActiveWindow(), lastActive})
        if (isSeen(form)) return form;
    for (const Form* form : Forms::loaded())
        if (isSeen(form->handle())) return form->handle();
    return nullptr;
}

void Forms::becameActive(const Form& form) {
    lastActive = form.handle();
}

void Forms::showModalOne() {
    if (isSeen(lastActive) && IsWindowEnabled(lastActive)) SetForegroundWindow(lastActive);
}

void Forms::adopt(std::unique_ptr<Form> form) {
    form->owned_ = true;
    all().push_back(std::move(form));
}

void Forms::destroyLater(Form* form) {
    postToLoop([form] {
        const auto found = std::find_if(all().begin(), all().end(),
                                        [&](const auto& one) { return one.get() == form; });
        if (found == all().end() || form->depth_ > 0) return;
        const std::unique_ptr<Form> doomed = std::move(*found);
        doomed->owned_ = false;
        all().erase(found);
        if (all().empty()) PostQuitMessage(0);
    });
}

std::vector<Form*> Forms::loaded() {
    std::vector<Form*> forms;
    for (const auto& form : all())
        if (!form->closing_) forms.push_back(form.get());
    return forms;
}

Form* Forms::find(const std::wstring& name) {
    for (Form* form : loaded())
        if (upperCased(form->name()) == upperCased(name)) return form;
    return nullptr;
}

bool Forms::unloadTagged(const std::wstring& pattern) {
    for (Form* form : loaded()) {
        const auto now = loaded();  // a question may have closed others meanwhile
        if (std::find(now.begin(), now.end(), form) == now.end()) continue;
        if (like(form->tag, pattern) && !form->unload()) return false;
    }
    return true;
}

void Forms::unloadAll() {
    for (Form* form : loaded()) {
        const auto now = loaded();
        if (std::find(now.begin(), now.end(), form) != now.end()) form->close();
    }
}

bool RozneApi::IsFormLoaded(const std::wstring& name) {
    return Forms::find(name) != nullptr;
}

namespace {

struct Search {
    HWND except;
    std::vector<HWND>& found;
};

BOOL CALLBACK collectEnabled(HWND window, LPARAM data) {
    auto& search = *reinterpret_cast<Search*>(data);
    const auto* form = dynamic_cast<Form*>(windowOf(window));
    if (form && form->staysUsable()) return TRUE;
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
