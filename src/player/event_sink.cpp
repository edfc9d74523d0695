#include "player/event_sink.h"

#include <utility>

#include "player/late_bound.h"

namespace tunovka {
namespace {

// The type information of the control's class: from the control itself, else from the type
// library that describes its members.
ComPtr<ITypeInfo> classInfo(IUnknown* control, const CLSID& kind) {
    ComPtr<ITypeInfo> info;
    ComPtr<IProvideClassInfo> provider;
    control->QueryInterface(IID_IProvideClassInfo, provider.receiveVoid());
    if (provider && SUCCEEDED(provider->GetClassInfo(info.receive())) && info) return info;

    ComPtr<IDispatch> members;
    ComPtr<ITypeInfo> described;
    ComPtr<ITypeLib> library;
    UINT index = 0;
    control->QueryInterface(IID_IDispatch, members.receiveVoid());
    if (members && SUCCEEDED(members->GetTypeInfo(0, LOCALE_USER_DEFAULT, described.receive())) &&
        described && SUCCEEDED(described->GetContainingTypeLib(library.receive(), &index)))
        library->GetTypeInfoOfGuid(kind, info.receive());
    return info;
}

WORD interfaceCount(ITypeInfo* info) {
    TYPEATTR* attributes = nullptr;
    if (FAILED(info->GetTypeAttr(&attributes))) return 0;
    const WORD count = attributes->cImplTypes;
    info->ReleaseTypeAttr(attributes);
    return count;
}

// The class's default interface of those that it calls.
ComPtr<ITypeInfo> defaultEvents(ITypeInfo* classInfo) {
    constexpr INT wanted = IMPLTYPEFLAG_FDEFAULT | IMPLTYPEFLAG_FSOURCE;
    for (UINT at = 0; at < interfaceCount(classInfo); ++at) {
        INT flags = 0;
        HREFTYPE reference = 0;
        ComPtr<ITypeInfo> info;
        if (SUCCEEDED(classInfo->GetImplTypeFlags(at, &flags)) && (flags & wanted) == wanted &&
            SUCCEEDED(classInfo->GetRefTypeOfImplType(at, &reference)) &&
            SUCCEEDED(classInfo->GetRefTypeInfo(reference, info.receive())))
            return info;
    }
    return {};
}

std::unordered_map<DISPID, std::wstring> functionNames(ITypeInfo* info) {
    std::unordered_map<DISPID, std::wstring> names;
    FUNCDESC* function = nullptr;
    for (UINT at = 0; SUCCEEDED(info->GetFuncDesc(at, &function)); ++at) {
        BSTR name = nullptr;
        UINT count = 0;
        if (SUCCEEDED(info->GetNames(function->memid, &name, 1, &count)) && count == 1)
            names.emplace(function->memid, std::wstring(name, SysStringLen(name)));
        SysFreeString(name);
        info->ReleaseFuncDesc(function);
    }
    return names;
}

IID idOf(ITypeInfo* info) {
    TYPEATTR* attributes = nullptr;
    if (FAILED(info->GetTypeAttr(&attributes))) return IID_NULL;
    const IID id = attributes->guid;
    info->ReleaseTypeAttr(attributes);
    return id;
}

// The last argument comes first.
std::vector<long> wholeNumbers(const DISPPARAMS* parameters) {
    std::vector<long> numbers;
    for (UINT at = parameters ? parameters->cArgs : 0; at-- > 0;) {
        Variant number;
        VariantCopyInd(number.address(), &parameters->rgvarg[at]);
        numbers.push_back(number.toLong());
    }
    return numbers;
}

}  // namespace

EventSink::EventSink(const IID& events, ITypeInfo* names, ControlEvent handler)
    : events_(events), names_(functionNames(names)), handler_(std::move(handler)) {}

HRESULT EventSink::QueryInterface(REFIID iid, void** result) {
    if (!result) return E_POINTER;
    if (iid == IID_IUnknown || iid == IID_IDispatch || iid == events_)
        return handOut<IDispatch>(result);
    *result = nullptr;
    return E_NOINTERFACE;
}

HRESULT EventSink::GetTypeInfoCount(UINT* count) {
    if (count) *count = 0;
    return S_OK;
}

HRESULT EventSink::GetTypeInfo(UINT, LCID, ITypeInfo**) {
    return E_NOTIMPL;
}

HRESULT EventSink::GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) {
    return E_NOTIMPL;
}

HRESULT EventSink::Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT*,
                          EXCEPINFO*, UINT*) {
    const auto name = names_.find(id);
    if (name == names_.end()) return DISP_E_MEMBERNOTFOUND;
    try {
        if (handler_) handler_(name->second, wholeNumbers(parameters));
    } catch (...) {
        return E_FAIL;  // nothing may reach the control
    }
    return S_OK;
}

bool EventConnection::connect(IUnknown* control, const CLSID& kind, ControlEvent handler) {
    const ComPtr<ITypeInfo> whole = classInfo(control, kind);
    const ComPtr<ITypeInfo> events = whole ? defaultEvents(whole.get()) : ComPtr<ITypeInfo>();
    ComPtr<IConnectionPointContainer> container;
    control->QueryInterface(IID_IConnectionPointContainer, container.receiveVoid());
    if (!events || !container) return false;

    const IID id = idOf(events.get());
    if (FAILED(container->FindConnectionPoint(id, point_.receive())) || !point_) return false;
    sink_ = ComPtr<EventSink>(new EventSink(id, events.get(), std::move(handler)));
    return SUCCEEDED(point_->Advise(sink_.get(), &cookie_));
}

void EventConnection::disconnect() {
    if (sink_) sink_->silence();
    if (point_ && cookie_) point_->Unadvise(cookie_);
    cookie_ = 0;
    point_.reset();
    sink_.reset();
}

}  // namespace tunovka
