#pragma once

#include <windows.h>
// windows.h first: it needs its types.
#include <oleacc.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "core/late_function.h"

namespace tunovka {

// What a screen reader learns of a window, by the system's own road.
class ScreenReader {
  public:
    explicit ScreenReader(HWND window) {
        static const LateFunction<decltype(AccessibleObjectFromWindow)> ask(
            L"oleacc.dll", "AccessibleObjectFromWindow");
        static const IID id = {
            0x618736e0, 0x3c3d, 0x11cf, {0x81, 0x0c, 0x00, 0xaa, 0x00, 0x38, 0x9b, 0x71}};
        void* object = nullptr;
        if (ask && SUCCEEDED(ask(window, static_cast<DWORD>(OBJID_CLIENT), id, &object)))
            object_ = static_cast<IAccessible*>(object);
    }
    ~ScreenReader() {
        if (object_) object_->Release();
    }
    ScreenReader(const ScreenReader&) = delete;
    ScreenReader& operator=(const ScreenReader&) = delete;

    std::wstring name() const { return text(&IAccessible::get_accName); }
    std::wstring value() const { return text(&IAccessible::get_accValue); }
    long role() const { return number(&IAccessible::get_accRole); }
    long state() const { return number(&IAccessible::get_accState); }
    bool press() const { return object_ && SUCCEEDED(object_->accDoDefaultAction(self())); }

  private:
    static VARIANT self() {
        VARIANT child{};
        child.vt = VT_I4;
        return child;
    }
    std::wstring text(HRESULT (STDMETHODCALLTYPE IAccessible::*ask)(VARIANT, BSTR*)) const {
        BSTR answer = nullptr;
        if (!object_ || (object_->*ask)(self(), &answer) != S_OK || !answer) return {};
        std::wstring text(answer, SysStringLen(answer));
        SysFreeString(answer);
        return text;
    }
    long number(HRESULT (STDMETHODCALLTYPE IAccessible::*ask)(VARIANT, VARIANT*)) const {
        VARIANT answer{};
        if (!object_ || (object_->*ask)(self(), &answer) != S_OK || answer.vt != VT_I4) return -1;
        return answer.lVal;
    }

    IAccessible* object_ = nullptr;
};

// The events that windows of this program have told screen readers since this was made.
class Announcements {
  public:
    Announcements() {
        heard().clear();
        hook_ = SetWinEventHook(EVENT_SYSTEM_ALERT, EVENT_OBJECT_VALUECHANGE, nullptr, hear,
                                GetCurrentProcessId(), 0, WINEVENT_OUTOFCONTEXT);
    }
    ~Announcements() { UnhookWinEvent(hook_); }
    Announcements(const Announcements&) = delete;
    Announcements& operator=(const Announcements&) = delete;

    bool has(DWORD event, HWND window) const {
        return std::ranges::count(heard(), std::pair{event, window}) > 0;
    }

  private:
    static std::vector<std::pair<DWORD, HWND>>& heard() {
        static std::vector<std::pair<DWORD, HWND>> events;
        return events;
    }
    static void CALLBACK hear(HWINEVENTHOOK, DWORD event, HWND window, LONG, LONG, DWORD, DWORD) {
        heard().emplace_back(event, window);
    }

    HWINEVENTHOOK hook_;
};

}  // namespace tunovka
