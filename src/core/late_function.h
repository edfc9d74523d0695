#pragma once

#include <windows.h>

namespace tunovka {

// A function of a library of the system, looked up at its first call: for libraries that the first
// window can do without, because loading them is a good part of the program's start, and for
// functions that the oldest systems do not have. Lives as long as the program.
//
//     static const LateFunction<decltype(SHGetFileInfoW)> ask(L"shell32.dll", "SHGetFileInfoW");
template <typename Function>
class LateFunction {
  public:
    LateFunction(const wchar_t* library, const char* name) {
        const HMODULE module = LoadLibraryW(library);
        // By way of void*: no cast leads directly from one kind of function to another.
        if (module)
            function_ =
                reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(module, name)));
    }
    explicit operator bool() const { return function_ != nullptr; }

    // Only for a function that is there.
    template <typename... Args>
    auto operator()(Args... args) const {
        return function_(args...);
    }

  private:
    Function* function_ = nullptr;
};

}  // namespace tunovka
