#pragma once

#include <windows.h>
// windows.h first: this one needs its types.
#include <ocidl.h>

#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "core/com_object.h"
#include "core/handle.h"
#include "player/control_site.h"
#include "player/media_engine.h"

namespace tunovka {

// The media control, version 6.4: its class and its events, as its type library fixes them.
namespace media_control {

inline constexpr CLSID kClass = {
    0x22D6F312, 0xB0F6, 0x11D0, {0x94, 0xAB, 0, 0x80, 0xC7, 0x4C, 0x7E, 0x95}};
inline constexpr IID kEvents = {
    0x2D3A4C40, 0xE711, 0x11D0, {0x94, 0xAB, 0, 0x80, 0xC7, 0x4C, 0x7E, 0x95}};

enum Member : DISPID {
    kVolume = 19,
    kDuration = 1003,
    kAutoStart = 1017,
    kFileName = 1026,
    kCurrentPosition = 1027,
    kErrorDescription = 1066,
    kErrorCode = 1067,
    kPlayState = 1068,
    kPlay = 2001,
    kPause = 2002,
    kStop = 2003,
    kGetMediaInfoString = 2016,
    kPrevious = 2022,
    kNext = 2023,
};
enum Event : DISPID {
    kEndOfStream = 3002,
    kNewStream = 3008,
    kError = 3010,
    kOpenStateChange = 3011,
    kPlayStateChange = 3012,
};
enum State : long { kStopped = 0, kPaused = 1, kPlaying = 2, kClosed = 8, kOpen = 6 };

}  // namespace media_control

// The owner of one variant.
class Variant {
  public:
    Variant() = default;
    explicit Variant(long number) {
        value_.vt = VT_I4;
        value_.lVal = number;
    }
    explicit Variant(double number) {
        value_.vt = VT_R8;
        value_.dblVal = number;
    }
    explicit Variant(const std::wstring& text) {
        value_.vt = VT_BSTR;
        value_.bstrVal = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    }
    Variant(Variant&& other) noexcept { std::swap(value_, other.value_); }
    ~Variant() { VariantClear(&value_); }

    VARIANT* address() { return &value_; }

    // The value as a number, or 0; as text, or "".
    double toNumber() const;
    std::wstring toText() const;

  private:
    VARIANT value_{};
};

// Plays through the media control, where the system has it. The control opens playlists and steps
// through them itself.
class MediaControlEngine final : public MediaEngine {
  public:
    // Null where the control is not registered or cannot be created, or is not what it should be.
    static std::unique_ptr<MediaEngine> create();
    ~MediaControlEngine() override;

    bool takesLists() const override { return true; }
    std::optional<PlaybackTrouble> open(const std::wstring& file) override;
    bool isOpen() const override { return !file_.empty(); }
    void close() override;
    void play() override;
    void pause() override { call(media_control::kPause); }
    void previous() override { call(media_control::kPrevious); }
    void next() override { call(media_control::kNext); }
    double duration() const override;
    double position() const override;
    void seek(double seconds) override;
    void setVolume(int hundredthsOfDecibel) override;
    ClipDetails details() const override;
    std::optional<EngineEvent> takeEvent() override;

  private:
    class Sink;

    MediaControlEngine() = default;
    bool attach();
    void handle(DISPID event, const std::vector<long>& arguments);
    void observe(EngineEvent event) { observed_.push_back(std::move(event)); }
    void playStateIs(long state);
    PlaybackTrouble trouble() const;

    HRESULT put(DISPID property, Variant value);
    Variant get(DISPID property) const;
    HRESULT call(DISPID method);
    HRESULT invoke(DISPID member, WORD kind, DISPPARAMS parameters, Variant* result) const;

    HiddenControl host_;
    ComPtr<IDispatch> control_;
    ComPtr<IConnectionPoint> events_;
    ComPtr<Sink> sink_;
    DWORD cookie_ = 0;

    std::wstring file_;
    bool isList_ = false;
    bool opening_ = false;  // from setting the file until it plays or fails
    bool plays_ = false;
    bool openTold_ = false;         // of what is open now
    bool streamTold_ = false;       // the same, by its other event
    std::optional<DWORD> endedAt_;  // tick count when an entry of a list ended
    mutable std::wstring refusal_;  // the control's own words for the last call that failed
    std::deque<EngineEvent> observed_;
};

}  // namespace tunovka
