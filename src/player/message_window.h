#pragma once

#include <windows.h>

#include <functional>

#include "core/handle.h"

namespace tunovka {

// A window that nobody sees, which brings messages of other threads and components to the
// user-interface thread. It gives up waiting messages when it is destroyed.
class MessageWindow {
  public:
    using Handler = std::function<void(UINT message, WPARAM wparam, LPARAM lparam)>;

    // The handler gets the messages from WM_APP on. It must not throw and must not destroy the
    // window.
    explicit MessageWindow(Handler handler);

    HWND handle() const { return window_.get(); }

  private:
    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam);

    Handler handler_;
    SystemWindow window_;
};

}  // namespace tunovka
