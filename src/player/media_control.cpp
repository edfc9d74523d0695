#include "player/media_control.h"

#include <ocidl.h>

#include <algorithm>
#include <functional>

#include "core/com_object.h"
#include "core/handle.h"
#include "core/late_function.h"
#include "core/multimedialny.h"
#include "core/text.h"
#include "player/media_engine.h"

namespace tunovka {

using namespace media_control;

namespace {

// An entry of a list that has ended, with nothing behind it for so long, was the last one.
constexpr DWORD kEndOfList = 500;  // ms

bool isRegistered() {
    CLSID kind;
    ComPtr<IUnknown> factory;
    return SUCCEEDED(CLSIDFromString(kClass, &kind)) &&
           SUCCEEDED(CoGetClassObject(kind, CLSCTX_INPROC_SERVER, nullptr, IID_IUnknown,
                                      factory.receiveVoid()));
}

// Hands the control's events on, with their two numbers, for as long as there is a receiver.
class EventSink final : public ComObject<IDispatch> {
  public:
    std::function<void(DISPID event, long first, long second)> receiver;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** result) override {
        if (!result) return E_POINTER;
        if (iid == IID_IUnknown || iid == IID_IDispatch || iid == kEvents)
            return handOut<IDispatch>(result);
        *result = nullptr;
        return E_NOINTERFACE;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID event, REFIID, LCID, WORD, DISPPARAMS* parameters,
                                     VARIANT*, EXCEPINFO*, UINT*) override try {
        long numbers[2]{};
        const UINT count = parameters ? parameters->cArgs : 0;  // the last one comes first
        for (UINT at = 0; at < std::min(count, 2U); ++at) {
            Variant number;
            VariantCopyInd(&number, &parameters->rgvarg[count - 1 - at]);
            numbers[at] = static_cast<long>(number.toNumber());
        }
        if (receiver) receiver(event, numbers[0], numbers[1]);
        return S_OK;
    } catch (...) {
        return E_FAIL;  // nothing may reach the control
    }
};

// Plays through the media control, which opens playlists and steps through them itself.
class MediaControl final : public MediaEngine {
  public:
    ~MediaControl() override {
        if (!control_) return;
        MediaControl::close();
        sink_->receiver = {};
        if (cookie_) events_->Unadvise(cookie_);
    }

    // False when the control cannot be made, or is not what it should be. The system's control host
    // (in Windows since version 2000), a hidden window here, gives it its place.
    bool create() {
        static const LateFunction<BOOL WINAPI()> prepare(L"atl.dll", "AtlAxWinInit");
        static const LateFunction<HRESULT WINAPI(HWND, IUnknown**)> controlOf(L"atl.dll",
                                                                              "AtlAxGetControl");
        static const bool isPrepared = prepare && controlOf && prepare();
        if (!isPrepared) return false;
        host_ =
            SystemWindow(CreateWindowExW(WS_EX_TOOLWINDOW, L"AtlAxWin", kClass, WS_POPUP, 0, 0, 1,
                                         1, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr));
        ComPtr<IUnknown> control;
        controlOf(host_.get(), control.receive());
        control_ = control.as<IDispatch>();
        const auto container = control_.as<IConnectionPointContainer>();
        if (!container || FAILED(put(kAutoStart, Variant(-1L))) ||
            FAILED(container->FindConnectionPoint(kEvents, events_.receive())) || !events_)
            return false;
        sink_->receiver = [this](DISPID event, long, long state) { take(event, state); };
        return SUCCEEDED(events_->Advise(sink_.get(), &cookie_));
    }

    bool takesLists() const override { return true; }

    std::optional<PlaybackTrouble> open(const std::wstring& file) override {
        isList_ = MultiMedialny::isPlaylistName(lowerCased(file));
        opening_ = true;
        refusal_.clear();
        if (FAILED(put(kFileName, Variant(file)))) return trouble();
        return std::nullopt;
    }

    void close() override {
        call(kStop);
        put(kFileName, Variant(std::wstring()));
        opening_ = plays_ = openTold_ = streamTold_ = false;
        endedAt_.reset();
        observed_.clear();
    }

    // What is opened starts by itself.
    void play() override {
        if (!opening_ && !plays_ && FAILED(call(kPlay))) observeFailure(trouble());
    }
    void pause() override { call(kPause); }
    void step(int way) override { call(way > 0 ? kNext : kPrevious); }

    // The control says -1 when it does not know.
    double duration() const override { return std::max(get(kDuration).toNumber(), 0.0); }
    double position() const override { return std::max(get(kCurrentPosition).toNumber(), 0.0); }
    void seek(double seconds) override { put(kCurrentPosition, Variant(seconds)); }
    void setVolume(int hundredthsOfDecibel) override {
        put(kVolume, Variant(static_cast<long>(hundredthsOfDecibel)));
    }

    ClipDetails details() const override {
        const auto info = [this](long kind) {
            Variant argument(kind), result;
            invoke(kGetMediaInfoString, DISPATCH_METHOD, {&argument, nullptr, 1, 0}, &result);
            return result.toText();
        };
        return {info(kTitle), info(kAuthor)};
    }

  protected:
    void look() override {
        if (!endedAt_ || GetTickCount() - *endedAt_ < kEndOfList) return;
        endedAt_.reset();
        observe({EngineEvent::Kind::Ended});
    }

  private:
    void take(DISPID event, long newState) {
        switch (event) {
            case kNewStream:
                if (!openTold_ || streamTold_) observe({EngineEvent::Kind::Opened});
                openTold_ = streamTold_ = true;
                endedAt_.reset();
                break;
            case kOpenStateChange:
                if (newState == kOpen && !openTold_) observe({EngineEvent::Kind::Opened});
                openTold_ = newState == kOpen;
                if (!openTold_) streamTold_ = false;
                endedAt_.reset();
                break;
            case kPlayStateChange:
                playStateIs(newState);
                break;
            case kEndOfStream:
                ended({EngineEvent::Kind::Ended});
                break;
            case kError:
                observeFailure(trouble());
                break;
            default:
                break;
        }
    }

    // Waiting for data and skipping are no states of their own.
    void playStateIs(long state) {
        plays_ = state == kPlaying;
        if (state == kPlaying) {
            opening_ = false;
            endedAt_.reset();
            if (!std::exchange(openTold_, true)) observe({EngineEvent::Kind::Opened});
            observe({EngineEvent::Kind::StateIs, PlayState::Playing});
        } else if (state == kPaused) {
            observe({EngineEvent::Kind::StateIs, PlayState::Paused});
        } else if ((state == kStopped || state == kClosed) && !opening_) {
            ended({EngineEvent::Kind::StateIs, PlayState::Stopped});
        }
    }

    // Within a list another entry may follow.
    void ended(const EngineEvent& event) {
        if (isList_)
            endedAt_ = GetTickCount();
        else
            observe(event);
    }

    PlaybackTrouble trouble() const {
        std::wstring text = get(kErrorDescription).toText();
        if (text.empty()) text = refusal_;
        if (!text.empty()) return {text};
        return playbackTrouble(static_cast<HRESULT>(get(kErrorCode).toNumber()));
    }

    HRESULT put(DISPID property, Variant value) {
        DISPID assigned = DISPID_PROPERTYPUT;
        return invoke(property, DISPATCH_PROPERTYPUT, {&value, &assigned, 1, 1}, nullptr);
    }
    Variant get(DISPID property) const {
        Variant result;
        invoke(property, DISPATCH_PROPERTYGET, {}, &result);
        return result;
    }
    HRESULT call(DISPID method) { return invoke(method, DISPATCH_METHOD, {}, nullptr); }

    HRESULT invoke(DISPID member, WORD kind, DISPPARAMS parameters, VARIANT* result) const {
        EXCEPINFO exception{};
        const HRESULT done = control_->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, kind,
                                              &parameters, result, &exception, nullptr);
        if (done == DISP_E_EXCEPTION) {
            if (exception.pfnDeferredFillIn) exception.pfnDeferredFillIn(&exception);
            if (exception.bstrDescription) refusal_ = exception.bstrDescription;
            SysFreeString(exception.bstrDescription);
            SysFreeString(exception.bstrSource);
            SysFreeString(exception.bstrHelpFile);
        }
        return done;
    }

    SystemWindow host_;
    ComPtr<IDispatch> control_;
    ComPtr<IConnectionPoint> events_;
    ComPtr<EventSink> sink_{new EventSink};
    DWORD cookie_ = 0;

    bool isList_ = false;
    bool opening_ = false;  // from setting the file until it plays or fails
    bool plays_ = false;
    bool openTold_ = false;         // of what is open now
    bool streamTold_ = false;       // the same, by its other event
    std::optional<DWORD> endedAt_;  // tick count when an entry of a list ended
    mutable std::wstring refusal_;  // the control's own words for the last call that failed
};

}  // namespace

std::unique_ptr<MediaEngine> createMediaControl() {
    if (!isRegistered()) return nullptr;
    auto control = std::make_unique<MediaControl>();
    if (!control->create()) return nullptr;
    return control;
}

}  // namespace tunovka
