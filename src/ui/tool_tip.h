#pragma once

#include "ui/window.h"

namespace tunovka {

// The tool tips of a form's picture controls, in one system window that is made with the first.
class ToolTip : public Window {
  public:
    explicit ToolTip(Form& form) : owner_(form) {}

    // Shows a text when the pointer rests over a control; a later call changes it.
    void set(const Window& control, const std::wstring& text);

  private:
    Form& owner_;
};

}  // namespace tunovka
