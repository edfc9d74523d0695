#pragma once

#include <windows.h>

#include <string>

namespace tunovka {

// A library of the system by its file name, from the system's own folder: never from the current
// one or from beside the program. The common controls are found by their name, which leads to the
// version that the manifest asks for.
inline HMODULE systemLibrary(const std::wstring& name) {
    wchar_t folder[MAX_PATH]{};
    const bool byName = name == L"comctl32.dll" || !GetSystemDirectoryW(folder, MAX_PATH);
    return LoadLibraryW(byName ? name.c_str() : (folder + (L"\\" + name)).c_str());
}

// Whether the system is Wine, for the few things that have to be done in another way there.
inline bool underWine() {
    return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}

// A function of a library of the system, looked up at its first call: for libraries that the first
// window can do without, because loading them is a good part of the program's start, and for
// functions that the oldest systems do not have. Lives as long as the program.
//
//     static const LateFunction<decltype(SHGetFileInfoW)> ask(L"shell32.dll", "SHGetFileInfoW");
template <typename Function>
class LateFunction {
  public:
    LateFunction(const wchar_t* library, const char* name) {
        const HMODULE module = systemLibrary(library);
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
