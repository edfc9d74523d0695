#pragma once

#include <windows.h>

#include <vector>

namespace tunovka {

// Switches every other window of the program off for as long as it lives.
class ModalState {
  public:
    explicit ModalState(HWND except);
    ~ModalState();
    ModalState(const ModalState&) = delete;
    ModalState& operator=(const ModalState&) = delete;

  private:
    std::vector<HWND> disabled_;
};

// What comes before a message reaches its window: shortcuts of the form, Tab, Enter and Escape,
// which end here (true), and the wheel, which is sent to the window under the pointer.
bool filterMessage(MSG& message);

}  // namespace tunovka
