#pragma once

#include <set>

#include "ui/window.h"

namespace tunovka {

// The tool tips of a form's controls, in one system window that is made when the pointer comes to
// the first of them.
class ToolTip : public Window {
  public:
    explicit ToolTip(Form& form) : owner_(form) {}

    // The pointer has moved over a control, to a place within it: shows the control's tip when it
    // rests there.
    void pointerOver(const Window& control, const std::wstring& text, WPARAM keys, LPARAM place);

  private:
    Form& owner_;
    std::set<HWND> known_;
};

}  // namespace tunovka
