#include "ui/accessible.h"

#include <initguid.h>
#include <oleacc.h>

namespace tunovka {
namespace {

// oleacc.dll is loaded when the first screen reader asks, not at the start.
FARPROC accessibilityFunction(const char* name) {
    static const HMODULE library = LoadLibraryW(L"oleacc.dll");
    return library ? GetProcAddress(library, name) : nullptr;
}

template <typename Function>
Function accessibility(const char* name) {
    return reinterpret_cast<Function>(reinterpret_cast<void*>(accessibilityFunction(name)));
}

}  // namespace

std::optional<LRESULT> accessibleAs(const wchar_t* systemClass, HWND window, WPARAM wparam,
                                    LPARAM lparam) {
    if (static_cast<LONG>(lparam) != OBJID_CLIENT) return std::nullopt;
    using Create = HRESULT(WINAPI*)(HWND, LPCWSTR, LONG, REFIID, void**);
    using Answer = LRESULT(WINAPI*)(REFIID, WPARAM, IUnknown*);
    const auto create = accessibility<Create>("CreateStdAccessibleProxyW");
    const auto answer = accessibility<Answer>("LresultFromObject");
    if (!create || !answer) return std::nullopt;
    IAccessible* object = nullptr;
    if (FAILED(create(window, systemClass, OBJID_CLIENT, IID_IAccessible,
                      reinterpret_cast<void**>(&object))))
        return std::nullopt;
    const LRESULT result = answer(IID_IAccessible, wparam, object);
    object->Release();
    return result;
}

}  // namespace tunovka
