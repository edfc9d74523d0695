// An in-process component with the class, the members and the events of the media control, for
// systems that have none and for tests that want it to misbehave.
#include "windows/fake_control/fake_control.h"

#include <windows.h>
// windows.h first: these need its types.
#include <ocidl.h>
#include <oleauto.h>
#include <olectl.h>

#include <map>
#include <string>
#include <vector>

#include "core/com_object.h"
#include "player/late_bound.h"

namespace tunovka {
namespace {

constexpr CLSID kMembers = {
    0x22D6F311, 0xB0F6, 0x11D0, {0x94, 0xAB, 0, 0x80, 0xC7, 0x4C, 0x7E, 0x95}};
constexpr CLSID kClass = {
    0x22D6F312, 0xB0F6, 0x11D0, {0x94, 0xAB, 0, 0x80, 0xC7, 0x4C, 0x7E, 0x95}};
constexpr IID kEvents = {0x2D3A4C40, 0xE711, 0x11D0, {0x94, 0xAB, 0, 0x80, 0xC7, 0x4C, 0x7E, 0x95}};

HMODULE ownModule = nullptr;

class Control;

// What the test set and what the controls did.
struct Driver final : FakeControl {
    int living() override { return alive; }
    bool activeInPlace() override;
    bool seen() override;
    const wchar_t* takeCalls() override {
        taken = std::exchange(calls, {});
        return taken.c_str();
    }
    void raise(const wchar_t* event, long first, long second) override;
    void setText(const wchar_t* property, const wchar_t* text) override { texts[property] = text; }
    void setNumber(const wchar_t* property, double number) override { numbers[property] = number; }
    void refuse(const wchar_t* what) override { refused = what; }
    void behaveLikeARealOne(bool behave) override { behaves = behave; }

    void note(const std::wstring& call) { calls += call + L";"; }

    int alive = 0;
    Control* last = nullptr;
    std::wstring calls, taken, refused;
    std::map<std::wstring, std::wstring> texts;
    std::map<std::wstring, double> numbers;
    bool behaves = false;
} driver;

// Type information of the library in this file's resources.
ComPtr<ITypeInfo> typeInfo(const GUID& id) {
    wchar_t path[MAX_PATH] = L"";
    GetModuleFileNameW(ownModule, path, MAX_PATH);
    ComPtr<ITypeLib> library;
    ComPtr<ITypeInfo> info;
    if (SUCCEEDED(LoadTypeLibEx(path, REGKIND_NONE, library.receive())))
        library->GetTypeInfoOfGuid(id, info.receive());
    return info;
}

DISPID numberOf(ITypeInfo* info, const wchar_t* name) {
    auto* asked = const_cast<wchar_t*>(name);
    MEMBERID id = DISPID_UNKNOWN;
    info->GetIDsOfNames(&asked, 1, &id);
    return id;
}

class Control final
    : public ComObject<IOleObject, IOleInPlaceObject, IPersistStreamInit, IProvideClassInfo,
                       IConnectionPointContainer, IConnectionPoint, IDispatch> {
  public:
    Control() {
        ++driver.alive;
        driver.last = this;
    }
    ~Control() override {
        --driver.alive;
        if (driver.last == this) driver.last = nullptr;
    }

    bool active() const { return active_; }
    HWND parent() const { return parent_; }

    void raise(const wchar_t* event, long first = 0, long second = 0) {
        const DISPID id = numberOf(typeInfo(kEvents).get(), event);
        VARIANT arguments[2];  // the last one first
        arguments[0].vt = arguments[1].vt = VT_I4;
        arguments[0].lVal = second;
        arguments[1].lVal = first;
        const std::wstring name = event;
        const bool one = name == L"EndOfStream" || name == L"ReadyStateChange";
        const bool two = name.ends_with(L"StateChange") && !one;
        DISPPARAMS parameters{one ? arguments + 1 : arguments, nullptr,
                              two   ? 2u
                              : one ? 1u
                                    : 0u,
                              0};
        if (sink_)
            sink_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, nullptr,
                          nullptr, nullptr);
    }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** result) override {
        if (iid == IID_IUnknown || iid == IID_IOleObject) return handOut<IOleObject>(result);
        if (iid == IID_IDispatch || iid == kMembers) return handOut<IDispatch>(result);
        if (iid == IID_IOleWindow || iid == IID_IOleInPlaceObject)
            return handOut<IOleInPlaceObject>(result);
        if (iid == IID_IPersist || iid == IID_IPersistStreamInit)
            return handOut<IPersistStreamInit>(result);
        if (iid == IID_IProvideClassInfo && driver.refused != L"classInfo")
            return handOut<IProvideClassInfo>(result);
        if (iid == IID_IConnectionPointContainer && driver.refused != L"events")
            return handOut<IConnectionPointContainer>(result);
        *result = nullptr;
        return E_NOINTERFACE;
    }

    // IOleObject
    HRESULT STDMETHODCALLTYPE SetClientSite(IOleClientSite* site) override {
        driver.note(site ? L"SetClientSite" : L"SetClientSite(none)");
        site_ = ComPtr<IOleClientSite>::shared(site);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetClientSite(IOleClientSite** site) override {
        *site = ComPtr<IOleClientSite>::shared(site_.get()).release();
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE DoVerb(LONG verb, MSG*, IOleClientSite* site, LONG, HWND parent,
                                     LPCRECT) override {
        if (verb != OLEIVERB_INPLACEACTIVATE || driver.refused == L"activate") return E_FAIL;
        // As a real control does: asks its site for the place and the frame.
        ComPtr<IOleInPlaceSite> place;
        site->QueryInterface(IID_IOleInPlaceSite, place.receiveVoid());
        if (!place || place->CanInPlaceActivate() != S_OK) return E_FAIL;
        ComPtr<IOleInPlaceFrame> frame;
        ComPtr<IOleInPlaceUIWindow> document;
        RECT position, clip;
        OLEINPLACEFRAMEINFO info{sizeof info, FALSE, nullptr, nullptr, 0};
        if (FAILED(place->GetWindowContext(frame.receive(), document.receive(), &position, &clip,
                                           &info)) ||
            !frame || FAILED(place->GetWindow(&parent_)) || parent_ != parent)
            return E_FAIL;
        place->OnInPlaceActivate();
        driver.note(L"InPlaceActivate");
        active_ = true;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Close(DWORD) override {
        driver.note(L"Close");
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetMiscStatus(DWORD, DWORD* status) override {
        *status = OLEMISC_SETCLIENTSITEFIRST | OLEMISC_INSIDEOUT;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE SetHostNames(LPCOLESTR, LPCOLESTR) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE SetMoniker(DWORD, IMoniker*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetMoniker(DWORD, DWORD, IMoniker**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE InitFromData(IDataObject*, BOOL, DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetClipboardData(DWORD, IDataObject**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE EnumVerbs(IEnumOLEVERB**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Update() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE IsUpToDate() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetUserClassID(CLSID* id) override { return GetClassID(id); }
    HRESULT STDMETHODCALLTYPE GetUserType(DWORD, LPOLESTR*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetExtent(DWORD, SIZEL*) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetExtent(DWORD, SIZEL*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Advise(IAdviseSink*, DWORD*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE EnumAdvise(IEnumSTATDATA**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetColorScheme(LOGPALETTE*) override { return E_NOTIMPL; }

    // IOleInPlaceObject
    HRESULT STDMETHODCALLTYPE GetWindow(HWND*) override { return E_FAIL; }
    HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE InPlaceDeactivate() override {
        driver.note(L"InPlaceDeactivate");
        active_ = false;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE UIDeactivate() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE SetObjectRects(LPCRECT, LPCRECT) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE ReactivateAndUndo() override { return E_NOTIMPL; }

    // IPersistStreamInit
    HRESULT STDMETHODCALLTYPE GetClassID(CLSID* id) override {
        *id = kClass;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE IsDirty() override { return S_FALSE; }
    HRESULT STDMETHODCALLTYPE Load(IStream*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Save(IStream*, BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetSizeMax(ULARGE_INTEGER*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE InitNew() override {
        driver.note(L"InitNew");
        return S_OK;
    }

    // IProvideClassInfo
    HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** info) override {
        *info = typeInfo(kClass).release();
        return *info ? S_OK : E_FAIL;
    }

    // IConnectionPointContainer
    HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID iid, IConnectionPoint** point) override {
        if (iid != kEvents) return CONNECT_E_NOCONNECTION;
        return handOut<IConnectionPoint>(reinterpret_cast<void**>(point));
    }

    // IConnectionPoint
    HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID* iid) override {
        *iid = kEvents;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetConnectionPointContainer(IConnectionPointContainer**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Advise(IUnknown* sink, DWORD* cookie) override {
        sink->QueryInterface(kEvents, sink_.receiveVoid());
        *cookie = 7;
        return sink_ ? S_OK : CONNECT_E_CANNOTCONNECT;
    }
    HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override {
        sink_.reset();
        return cookie == 7 ? S_OK : CONNECT_E_NOCONNECTION;
    }
    HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections**) override { return E_NOTIMPL; }

    // IDispatch
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        *count = 1;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** info) override {
        *info = typeInfo(kMembers).release();
        return *info ? S_OK : E_FAIL;
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID,
                                            DISPID* ids) override {
        return typeInfo(kMembers)->GetIDsOfNames(names, count, ids);
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD kind, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* exception, UINT*) override;

  private:
    void react(const std::wstring& member, const std::wstring& value);
    void playStateBecomes(long state) {
        const long old = std::exchange(state_, state);
        if (old != state) raise(L"PlayStateChange", old, state);
    }

    ComPtr<IOleClientSite> site_;
    ComPtr<IDispatch> sink_;
    HWND parent_ = nullptr;
    bool active_ = false;
    long state_ = 0;
};

std::wstring textOf(const VARIANT& value) {
    Variant copy;
    VariantCopy(copy.address(), const_cast<VARIANT*>(&value));
    return copy.toText();
}

HRESULT Control::Invoke(DISPID id, REFIID, LCID, WORD kind, DISPPARAMS* parameters, VARIANT* result,
                        EXCEPINFO* exception, UINT*) {
    BSTR found = nullptr;
    UINT count = 0;
    typeInfo(kMembers)->GetNames(id, &found, 1, &count);
    const std::wstring name = count == 1 ? found : L"";
    SysFreeString(found);
    if (name.empty()) return DISP_E_MEMBERNOTFOUND;

    const std::wstring value = parameters->cArgs ? textOf(parameters->rgvarg[0]) : L"";
    const std::wstring key = kind & DISPATCH_METHOD ? name + value : name;
    if (kind & DISPATCH_PROPERTYGET || name == L"GetMediaInfoString") {
        Variant answer = driver.numbers.contains(key) ? Variant(driver.numbers[key])
                                                      : Variant(driver.texts[key]);
        std::swap(*result, *answer.address());
        return S_OK;
    }
    driver.note(kind & DISPATCH_METHOD ? name : name + L"=" + value);
    if (driver.refused == name) {
        exception->bstrDescription = SysAllocString(L"Odmietnuté.");
        exception->scode = E_INVALIDARG;
        return DISP_E_EXCEPTION;
    }
    if (driver.behaves) react(name, value);
    return S_OK;
}

void Control::react(const std::wstring& member, const std::wstring& value) {
    if (member == L"FileName") {
        playStateBecomes(0);  // late news of the former file
        if (value.empty()) return;
        raise(L"OpenStateChange", 0, 1);
        raise(L"OpenStateChange", 1, 6);
        raise(L"NewStream");
        playStateBecomes(2);
    } else if (member == L"Play") {
        playStateBecomes(2);
    } else if (member == L"Pause") {
        playStateBecomes(1);
    } else if (member == L"Stop") {
        playStateBecomes(0);
    } else if (member == L"Next" || member == L"Previous") {
        raise(L"OpenStateChange", 6, 1);
        raise(L"OpenStateChange", 1, 6);
    }
}

bool Driver::activeInPlace() {
    return last && last->active();
}

bool Driver::seen() {
    return last && IsWindowVisible(last->parent());
}

void Driver::raise(const wchar_t* event, long first, long second) {
    if (last) last->raise(event, first, second);
}

class Factory final : public ComObject<IClassFactory> {
  public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** result) override {
        if (iid == IID_IUnknown || iid == IID_IClassFactory) return handOut<IClassFactory>(result);
        *result = nullptr;
        return E_NOINTERFACE;
    }
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** result) override {
        *result = nullptr;
        if (outer) return CLASS_E_NOAGGREGATION;
        if (driver.refused == L"create") return E_FAIL;
        const ComPtr<Control> made(new Control);
        return made->QueryInterface(iid, result);
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }
};

}  // namespace
}  // namespace tunovka

extern "C" __declspec(dllexport) FakeControl* __cdecl fakeControl() {
    return &tunovka::driver;
}

STDAPI DllGetClassObject(REFCLSID kind, REFIID iid, void** result) {
    *result = nullptr;
    if (kind != tunovka::kClass) return CLASS_E_CLASSNOTAVAILABLE;
    const tunovka::ComPtr<tunovka::Factory> factory(new tunovka::Factory);
    return factory->QueryInterface(iid, result);
}

STDAPI DllCanUnloadNow() {
    return S_FALSE;  // the test holds it loaded
}

BOOL WINAPI DllMain(HINSTANCE module, DWORD, LPVOID) {
    tunovka::ownModule = module;
    return TRUE;
}
