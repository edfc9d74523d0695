#pragma once

#include <functional>
#include <string>

namespace tunovka {

// A hidden one-line text through which windows hand each other a command or a value. The change
// handler runs each time that another text is set; the handler may set the text itself.
class TextBox {
  public:
    const std::wstring& text() const { return text_; }

    void setText(const std::wstring& text) {
        if (text == text_) return;
        text_ = text;
        if (onChange) onChange();
    }

    std::function<void()> onChange;

  private:
    std::wstring text_;
};

}  // namespace tunovka
