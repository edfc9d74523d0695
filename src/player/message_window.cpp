#include "player/message_window.h"

#include <utility>

namespace tunovka {

MessageWindow::MessageWindow(Handler handler) : handler_(std::move(handler)) {
    WNDCLASSW kind{};
    kind.lpfnWndProc = procedure;
    kind.hInstance = GetModuleHandleW(nullptr);
    kind.lpszClassName = L"Tunovka.messages";
    RegisterClassW(&kind);
    window_ = SystemWindow(CreateWindowExW(0, kind.lpszClassName, L"", 0, 0, 0, 0, 0, HWND_MESSAGE,
                                           nullptr, kind.hInstance, nullptr));
    SetWindowLongPtrW(window_.get(), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

LRESULT CALLBACK MessageWindow::procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    auto* self = reinterpret_cast<MessageWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (!self || message < WM_APP || message > 0xBFFF)
        return DefWindowProcW(window, message, wparam, lparam);
    self->handler_(message, wparam, lparam);
    return 0;
}

}  // namespace tunovka
