#pragma once

#include <windows.h>

#include <atomic>
#include <string>

namespace tunovka {

// A library of the system, from the system's own folder: never from the current one or from beside
// the program. Of the common controls the name leads to the version that the manifest asks for.
inline HMODULE systemLibrary(const std::wstring& name) {
    wchar_t folder[MAX_PATH]{};
    const bool byName = name == L"comctl32.dll" || !GetSystemDirectoryW(folder, MAX_PATH);
    return LoadLibraryW(byName ? name.c_str() : (folder + (L"\\" + name)).c_str());
}

// Whether the system is Wine, for the few things that have to be done in another way there.
inline bool underWine() {
    return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}

// A function of a library of the system, looked up by its first call: for libraries that the first
// window can do without, because loading them is a good part of the program's start, and for
// functions that the oldest systems do not have. Made as a constant that lives as long as the
// program.
template <typename Function>
class LateFunction {
  public:
    constexpr LateFunction(const wchar_t* library, const char* name)
        : library_(library), name_(name) {}

    explicit operator bool() const { return function() != nullptr; }

    // Only for a function that is there.
    template <typename... Args>
    auto operator()(Args... args) const {
        return function()(args...);
    }

  private:
    Function* function() const {
        if (!isLookedUp_) {
            const HMODULE module = systemLibrary(library_);
            // By way of void*: no cast leads directly from one kind of function to another.
            if (module)
                function_ = reinterpret_cast<Function*>(
                    reinterpret_cast<void*>(GetProcAddress(module, name_)));
            isLookedUp_ = true;
        }
        return function_;
    }

    const wchar_t* library_;
    const char* name_;
    mutable std::atomic<Function*> function_ = nullptr;
    mutable std::atomic<bool> isLookedUp_ = false;
};

}  // namespace tunovka
