#include "player/media_control.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "core/multimedialny.h"
#include "core/text.h"
#include "player/playback_errors.h"

namespace tunovka {

using namespace media_control;

namespace {

constexpr long kTitleInfo = 8, kAuthorInfo = 9;

// An entry of a list that has ended, with nothing behind it for so long, was the last one.
constexpr DWORD kEndOfList = 500;  // ms

// The value changed to another type; empty when it cannot be.
VARIANT changed(const VARIANT& value, VARTYPE type) {
    VARIANT result;
    VariantInit(&result);
    if (FAILED(VariantChangeType(&result, const_cast<VARIANT*>(&value), 0, type)))
        VariantInit(&result);
    return result;
}

}  // namespace

double Variant::toNumber() const {
    const VARIANT number = changed(value_, VT_R8);
    return number.vt == VT_R8 ? number.dblVal : 0;
}

std::wstring Variant::toText() const {
    VARIANT text = changed(value_, VT_BSTR);
    std::wstring result;
    if (text.vt == VT_BSTR && text.bstrVal) result.assign(text.bstrVal, SysStringLen(text.bstrVal));
    VariantClear(&text);
    return result;
}

// Takes the control's events, as long as the engine lives.
class MediaControlEngine::Sink final : public ComObject<IDispatch> {
  public:
    explicit Sink(MediaControlEngine* engine) : engine(engine) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** result) override {
        if (!result) return E_POINTER;
        if (iid == IID_IUnknown || iid == IID_IDispatch || iid == kEvents)
            return handOut<IDispatch>(result);
        *result = nullptr;
        return E_NOINTERFACE;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        if (count) *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* parameters,
                                     VARIANT*, EXCEPINFO*, UINT*) override {
        try {
            std::vector<long> arguments;  // the last one comes first
            for (UINT at = parameters ? parameters->cArgs : 0; at-- > 0;) {
                Variant number;
                VariantCopyInd(number.address(), &parameters->rgvarg[at]);
                arguments.push_back(static_cast<long>(number.toNumber()));
            }
            if (engine) engine->handle(id, arguments);
        } catch (...) {
            return E_FAIL;  // nothing may reach the control
        }
        return S_OK;
    }

    MediaControlEngine* engine;
};

std::unique_ptr<MediaEngine> MediaControlEngine::create() {
    std::unique_ptr<MediaControlEngine> engine(new MediaControlEngine);
    if (!engine->attach()) return nullptr;
    return engine;
}

bool MediaControlEngine::attach() {
    if (!host_.create(kClass)) return false;
    const ComPtr<IUnknown> object = ComPtr<IUnknown>::shared(host_.object());
    control_ = object.as<IDispatch>();
    const auto container = object.as<IConnectionPointContainer>();
    if (!control_ || FAILED(put(kAutoStart, Variant(-1L))) || !container ||
        FAILED(container->FindConnectionPoint(kEvents, events_.receive())) || !events_)
        return false;
    sink_ = ComPtr<Sink>(new Sink(this));
    return SUCCEEDED(events_->Advise(sink_.get(), &cookie_));
}

MediaControlEngine::~MediaControlEngine() {
    close();
    if (sink_) sink_->engine = nullptr;
    if (events_ && cookie_) events_->Unadvise(cookie_);
}

void MediaControlEngine::handle(DISPID event, const std::vector<long>& arguments) {
    const long newState = arguments.size() > 1 ? arguments[1] : 0;
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
            if (isList_)
                endedAt_ = GetTickCount();
            else
                observe({EngineEvent::Kind::Ended});
            break;
        case kError:
            observe({.kind = EngineEvent::Kind::Failed, .trouble = trouble()});
            break;
        default:
            break;
    }
}

// Waiting for data and skipping are no states of their own.
void MediaControlEngine::playStateIs(long state) {
    plays_ = state == kPlaying;
    if (state == kPlaying) {
        opening_ = false;
        endedAt_.reset();
        observe({EngineEvent::Kind::StateIs, PlayState::Playing});
    } else if (state == kPaused) {
        observe({EngineEvent::Kind::StateIs, PlayState::Paused});
    } else if ((state == kStopped || state == kClosed) && !opening_) {
        if (isList_)
            endedAt_ = GetTickCount();
        else
            observe({EngineEvent::Kind::StateIs, PlayState::Stopped});
    }
}

PlaybackTrouble MediaControlEngine::trouble() const {
    std::wstring text = get(kErrorDescription).toText();
    if (text.empty()) text = refusal_;
    if (!text.empty()) return {text};
    return playbackTrouble(static_cast<HRESULT>(get(kErrorCode).toNumber()));
}
std::optional<PlaybackTrouble> MediaControlEngine::open(const std::wstring& file) {
    close();
    isList_ = MultiMedialny::isPlaylistName(lowerCased(file));
    opening_ = true;
    if (FAILED(put(kFileName, Variant(file)))) {
        opening_ = false;
        observed_.clear();
        return trouble();
    }
    file_ = file;
    return std::nullopt;
}

void MediaControlEngine::close() {
    if (!file_.empty()) {
        call(kStop);
        put(kFileName, Variant(std::wstring()));
    }
    file_.clear();
    opening_ = plays_ = openTold_ = streamTold_ = false;
    endedAt_.reset();
    observed_.clear();
}

// What is opened starts by itself.
void MediaControlEngine::play() {
    if (!opening_ && !plays_ && FAILED(call(kPlay)))
        observe({.kind = EngineEvent::Kind::Failed, .trouble = trouble()});
}

// The control says -1 when it does not know.
double MediaControlEngine::duration() const {
    return std::max(get(kDuration).toNumber(), 0.0);
}

double MediaControlEngine::position() const {
    return std::max(get(kCurrentPosition).toNumber(), 0.0);
}

void MediaControlEngine::seek(double seconds) {
    put(kCurrentPosition, Variant(seconds));
}

void MediaControlEngine::setVolume(int hundredthsOfDecibel) {
    put(kVolume, Variant(static_cast<long>(hundredthsOfDecibel)));
}

ClipDetails MediaControlEngine::details() const {
    const auto info = [this](long kind) {
        Variant argument(kind), result;
        invoke(kGetMediaInfoString, DISPATCH_METHOD, {argument.address(), nullptr, 1, 0}, &result);
        return result.toText();
    };
    return {info(kTitleInfo), info(kAuthorInfo)};
}

std::optional<EngineEvent> MediaControlEngine::takeEvent() {
    if (observed_.empty() && endedAt_ && GetTickCount() - *endedAt_ >= kEndOfList) {
        endedAt_.reset();
        observe({EngineEvent::Kind::Ended});
    }
    if (observed_.empty()) return std::nullopt;
    EngineEvent event = std::move(observed_.front());
    observed_.pop_front();
    return event;
}

HRESULT MediaControlEngine::put(DISPID property, Variant value) {
    DISPID assigned = DISPID_PROPERTYPUT;
    return invoke(property, DISPATCH_PROPERTYPUT, {value.address(), &assigned, 1, 1}, nullptr);
}

Variant MediaControlEngine::get(DISPID property) const {
    Variant result;
    invoke(property, DISPATCH_PROPERTYGET, {}, &result);
    return result;
}

HRESULT MediaControlEngine::call(DISPID method) {
    return invoke(method, DISPATCH_METHOD, {}, nullptr);
}

HRESULT MediaControlEngine::invoke(DISPID member, WORD kind, DISPPARAMS parameters,
                                   Variant* result) const {
    EXCEPINFO exception{};
    const HRESULT done =
        control_->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, kind, &parameters,
                         result ? result->address() : nullptr, &exception, nullptr);
    if (done == DISP_E_EXCEPTION) {
        if (exception.pfnDeferredFillIn) exception.pfnDeferredFillIn(&exception);
        if (exception.bstrDescription) refusal_ = exception.bstrDescription;
        SysFreeString(exception.bstrDescription);
        SysFreeString(exception.bstrSource);
        SysFreeString(exception.bstrHelpFile);
    }
    return done;
}

}  // namespace tunovka
