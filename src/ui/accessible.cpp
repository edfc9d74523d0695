#include "ui/window.h"

#include <initguid.h>
#include <oleacc.h>

#include <utility>

#include "core/com_object.h"
#include "core/handle.h"
#include "core/late_function.h"
#include "core/ole_windows.h"

namespace tunovka {
namespace {

// oleacc.dll is loaded when the first screen reader asks, not at the start.
constexpr wchar_t kLibrary[] = L"oleacc.dll";

HRESULT toBstr(const std::wstring& text, BSTR* result) {
    *result = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    return *result ? S_OK : E_OUTOFMEMORY;
}

HRESULT toVariant(long number, VARIANT* result) {
    result->vt = VT_I4;
    result->lVal = number;
    return S_OK;
}

// The system's accessibility object of a window; what Window::describe() says replaces its answers.
class AccessibleControl final : public ComObject<IAccessible> {
  public:
    AccessibleControl(HWND window, ComPtr<IAccessible> system)
        : window_(window), system_(std::move(system)) {}

    STDMETHODIMP QueryInterface(REFIID id, void** result) override {
        if (id == IID_IUnknown || id == IID_IDispatch || id == IID_IAccessible)
            return handOut<IAccessible>(result);
        return system_->QueryInterface(id, result);  // the list of the windows within
    }

    STDMETHODIMP GetTypeInfoCount(UINT* count) override { return system_->GetTypeInfoCount(count); }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return E_NOTIMPL;
    }
    STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                        UINT*) override {
        return E_NOTIMPL;
    }

    STDMETHODIMP get_accName(VARIANT child, BSTR* name) override {
        const AccessibleFacts own = facts(child);
        return own.name ? toBstr(*own.name, name) : system_->get_accName(child, name);
    }
    STDMETHODIMP get_accValue(VARIANT child, BSTR* value) override {
        const AccessibleFacts own = facts(child);
        return own.value ? toBstr(*own.value, value) : system_->get_accValue(child, value);
    }
    STDMETHODIMP get_accRole(VARIANT child, VARIANT* role) override {
        const AccessibleFacts own = facts(child);
        return own.role ? toVariant(own.role, role) : system_->get_accRole(child, role);
    }
    STDMETHODIMP get_accState(VARIANT child, VARIANT* state) override {
        const AccessibleFacts own = facts(child);
        return own.role ? toVariant(own.state | windowState(), state)
                        : system_->get_accState(child, state);
    }
    STDMETHODIMP get_accDefaultAction(VARIANT child, BSTR* action) override {
        const std::wstring own = facts(child).action;
        return own.empty() ? system_->get_accDefaultAction(child, action) : toBstr(own, action);
    }
    STDMETHODIMP accDoDefaultAction(VARIANT child) override {
        if (facts(child).action.empty()) return system_->accDoDefaultAction(child);
        // Posted: what follows may last until a person has answered a question.
        return PostMessageW(window_, BM_CLICK, 0, 0) ? S_OK : E_FAIL;
    }

    STDMETHODIMP get_accParent(IDispatch** parent) override {
        return system_->get_accParent(parent);
    }
    STDMETHODIMP get_accChildCount(long* count) override {
        return system_->get_accChildCount(count);
    }
    STDMETHODIMP get_accChild(VARIANT child, IDispatch** object) override {
        return system_->get_accChild(child, object);
    }
    STDMETHODIMP get_accDescription(VARIANT child, BSTR* text) override {
        return system_->get_accDescription(child, text);
    }
    STDMETHODIMP get_accHelp(VARIANT child, BSTR* text) override {
        return system_->get_accHelp(child, text);
    }
    STDMETHODIMP get_accHelpTopic(BSTR* file, VARIANT child, long* topic) override {
        return system_->get_accHelpTopic(file, child, topic);
    }
    STDMETHODIMP get_accKeyboardShortcut(VARIANT child, BSTR* keys) override {
        return system_->get_accKeyboardShortcut(child, keys);
    }
    STDMETHODIMP get_accFocus(VARIANT* child) override { return system_->get_accFocus(child); }
    STDMETHODIMP get_accSelection(VARIANT* children) override {
        return system_->get_accSelection(children);
    }
    STDMETHODIMP accSelect(long flags, VARIANT child) override {
        return system_->accSelect(flags, child);
    }
    STDMETHODIMP accLocation(long* left, long* top, long* width, long* height,
                             VARIANT child) override {
        return system_->accLocation(left, top, width, height, child);
    }
    STDMETHODIMP accNavigate(long direction, VARIANT from, VARIANT* to) override {
        return system_->accNavigate(direction, from, to);
    }
    STDMETHODIMP accHitTest(long left, long top, VARIANT* child) override {
        return system_->accHitTest(left, top, child);
    }
    STDMETHODIMP put_accName(VARIANT, BSTR) override { return E_NOTIMPL; }
    STDMETHODIMP put_accValue(VARIANT, BSTR) override { return E_NOTIMPL; }

  private:
    // None when the window has gone, which the object may outlive, or does not know.
    AccessibleFacts facts(const VARIANT& child) const noexcept try {
        const Window* window = windowOf(window_);
        const bool isSelf = child.vt == VT_I4 && child.lVal == CHILDID_SELF;
        return window && isSelf ? window->describe().value_or(AccessibleFacts())
                                : AccessibleFacts();
    } catch (...) {
        return {};
    }

    long windowState() const {
        long state = 0;
        if (!IsWindowVisible(window_)) state |= STATE_SYSTEM_INVISIBLE;
        if (!IsWindowEnabled(window_)) state |= STATE_SYSTEM_UNAVAILABLE;
        if (GetWindowLongW(window_, GWL_STYLE) & WS_TABSTOP) state |= STATE_SYSTEM_FOCUSABLE;
        if (GetFocus() == window_) state |= STATE_SYSTEM_FOCUSED;
        return state;
    }

    HWND window_;
    ComPtr<IAccessible> system_;
};

}  // namespace

std::optional<LRESULT> accessibleAnswer(HWND window, WPARAM wparam, LPARAM lparam) {
    if (static_cast<LONG>(lparam) != OBJID_CLIENT) return std::nullopt;
    static const LateFunction<decltype(CreateStdAccessibleObject)> create(
        kLibrary, "CreateStdAccessibleObject");
    static const LateFunction<decltype(LresultFromObject)> answer(kLibrary, "LresultFromObject");
    if (!create || !answer) return std::nullopt;
    ComPtr<IAccessible> system;
    if (FAILED(
            create(window, static_cast<LONG>(OBJID_CLIENT), IID_IAccessible, system.receiveVoid())))
        return std::nullopt;
    const ComPtr<IAccessible> control(new AccessibleControl(window, std::move(system)));
    return answer(IID_IAccessible, wparam, control.get());
}

}  // namespace tunovka
