#pragma once

#include <windows.h>
// windows.h first: this one needs its types.
#include <ocidl.h>

#include <functional>
#include <string>
#include <unordered_map>
#include <vector>

#include "core/com_object.h"
#include "core/handle.h"

namespace tunovka {

// What happened, by the event's name, and its whole numbers in their order.
using ControlEvent =
    std::function<void(const std::wstring& name, const std::vector<long>& arguments)>;

// Takes a control's events. Their numbers are read from the type information that the control
// brings, at run time, so that only their names need be known.
class EventSink final : public ComObject<IDispatch> {
  public:
    EventSink(const IID& events, ITypeInfo* names, ControlEvent handler);

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** result) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* parameters,
                                     VARIANT*, EXCEPINFO*, UINT*) override;

    // No event reaches the handler any more, whatever the control does.
    void silence() { handler_ = nullptr; }

  private:
    IID events_;
    std::unordered_map<DISPID, std::wstring> names_;
    ControlEvent handler_;
};

// A connection to the default event interface of a control, cut at the end.
class EventConnection {
  public:
    EventConnection() = default;
    ~EventConnection() { disconnect(); }
    EventConnection(const EventConnection&) = delete;
    EventConnection& operator=(const EventConnection&) = delete;

    // False when the control tells nothing of its events or refuses. `kind` is the control's
    // class. The handler may throw; the throw goes no further.
    bool connect(IUnknown* control, const CLSID& kind, ControlEvent handler);
    void disconnect();

  private:
    ComPtr<IConnectionPoint> point_;
    ComPtr<EventSink> sink_;
    DWORD cookie_ = 0;
};

}  // namespace tunovka
