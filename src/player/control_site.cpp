#include "player/control_site.h"

namespace tunovka {
namespace {

constexpr RECT kPlace{0, 0, 1, 1};  // of the control in its window, which is never shown

SystemWindow hiddenWindow() {
    return SystemWindow(CreateWindowExW(WS_EX_TOOLWINDOW, L"STATIC", L"", WS_POPUP, 0, 0, 1, 1,
                                        nullptr, nullptr, GetModuleHandleW(nullptr), nullptr));
}

}  // namespace

HRESULT ControlSite::QueryInterface(REFIID iid, void** result) {
    if (!result) return E_POINTER;
    if (iid == IID_IUnknown || iid == IID_IOleClientSite) return handOut<IOleClientSite>(result);
    if (iid == IID_IOleWindow || iid == IID_IOleInPlaceSite)
        return handOut<IOleInPlaceSite>(result);
    if (iid == IID_IOleInPlaceUIWindow || iid == IID_IOleInPlaceFrame)
        return handOut<IOleInPlaceFrame>(result);
    if (iid == IID_IOleControlSite) return handOut<IOleControlSite>(result);
    *result = nullptr;
    return E_NOINTERFACE;
}

HRESULT ControlSite::GetMoniker(DWORD, DWORD, IMoniker** moniker) {
    if (moniker) *moniker = nullptr;
    return E_NOTIMPL;
}

HRESULT ControlSite::GetContainer(IOleContainer** container) {
    if (container) *container = nullptr;
    return E_NOINTERFACE;
}

HRESULT ControlSite::GetWindow(HWND* window) {
    if (!window) return E_POINTER;
    *window = window_;
    return S_OK;
}

HRESULT ControlSite::GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document,
                                      RECT* position, RECT* clip, OLEINPLACEFRAMEINFO* info) {
    if (!frame || !document || !position || !clip || !info) return E_POINTER;
    *document = nullptr;
    *position = *clip = kPlace;
    info->fMDIApp = FALSE;
    info->hwndFrame = window_;
    info->haccel = nullptr;
    info->cAccelEntries = 0;
    return handOut<IOleInPlaceFrame>(reinterpret_cast<void**>(frame));
}

HRESULT ControlSite::GetExtendedControl(IDispatch** extended) {
    if (extended) *extended = nullptr;
    return E_NOTIMPL;
}

bool HiddenControl::create(const CLSID& kind) {
    CoCreateInstance(kind, nullptr, CLSCTX_INPROC_SERVER, IID_IOleObject, object_.receiveVoid());
    if (!object_) return false;
    window_ = hiddenWindow();
    site_ = ComPtr<ControlSite>(new ControlSite(window_.get()));
    DWORD status = 0;
    object_->GetMiscStatus(DVASPECT_CONTENT, &status);
    return settle(status) && SUCCEEDED(object_->DoVerb(OLEIVERB_INPLACEACTIVATE, nullptr,
                                                       site_.get(), 0, window_.get(), &kPlace));
}

// Gives the control its site and its initial state, in the order that it asks for.
bool HiddenControl::settle(DWORD status) {
    const bool siteFirst = (status & OLEMISC_SETCLIENTSITEFIRST) != 0;
    if (siteFirst && FAILED(object_->SetClientSite(site_.get()))) return false;
    ComPtr<IPersistStreamInit> state;
    object_->QueryInterface(IID_IPersistStreamInit, state.receiveVoid());
    if (state) state->InitNew();
    return siteFirst || SUCCEEDED(object_->SetClientSite(site_.get()));
}

HiddenControl::~HiddenControl() {
    if (!object_) return;
    ComPtr<IOleInPlaceObject> active;
    object_->QueryInterface(IID_IOleInPlaceObject, active.receiveVoid());
    if (active) active->InPlaceDeactivate();
    object_->Close(OLECLOSE_NOSAVE);
    object_->SetClientSite(nullptr);
}

}  // namespace tunovka
