#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "ui/form.h"

namespace tunovka {

// The window over which another one is opened: the program's active one, else the last that was,
// else the first that is loaded and seen. nullptr when there is none.
HWND activeForm();

// The program's loaded windows, in the order in which they were loaded. When the last one is
// destroyed, the program is asked to quit.
class Forms {
  public:
    // Takes a new form into its care until it is unloaded.
    template <typename T, typename... Arguments>
    static T& load(Arguments&&... arguments) {
        auto form = std::make_unique<T>(std::forward<Arguments>(arguments)...);
        T& loaded = *form;
        adopt(std::move(form));
        return loaded;
    }

    static std::vector<Form*> loaded();  // without those that are closing
    static Form* find(const std::wstring& name);

    // Unloads every form whose tag matches the pattern, in order; false as soon as one refuses.
    static bool unloadTagged(const std::wstring& pattern);

    // Unloads all that is left.
    static void unloadAll();

  private:
    friend class Form;
    static void becameActive(const Form& form);
    // Brings the form to the front that has switched the others off.
    static void showModalOne();
    static void adopt(std::unique_ptr<Form> form);
    static void destroyLater(Form* form);
};

namespace RozneApi {

// True when a window of that name is loaded; letter case aside.
bool IsFormLoaded(const std::wstring& name);

}  // namespace RozneApi

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
