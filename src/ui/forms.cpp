#include <algorithm>

#include "core/loop.h"
#include "core/text.h"
#include "ui/form.h"
#include "ui/modal.h"

namespace tunovka {
namespace {

std::vector<std::unique_ptr<Form>>& all() {
    static std::vector<std::unique_ptr<Form>> forms;
    return forms;
}

}  // namespace

HWND activeForm() {
    const HWND active = GetActiveWindow();
    return active && windowOf(active) && IsWindowVisible(active) ? active : nullptr;
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

namespace RozneApi {

bool IsFormLoaded(const std::wstring& name) {
    return Forms::find(name) != nullptr;
}

void ShowTitleBar(const Window& window, bool show) {
    const LONG style = GetWindowLongW(window.handle(), GWL_STYLE);
    const LONG wanted = show ? style | WS_CAPTION : style & ~WS_CAPTION;
    if (wanted == style) return;  // drawing the frame anew takes milliseconds
    SetWindowLongW(window.handle(), GWL_STYLE, wanted);
    SetWindowPos(window.handle(), nullptr, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_FRAMECHANGED);
}

}  // namespace RozneApi
}  // namespace tunovka
