#pragma once

#include <string>
#include <utility>

#include "core/ole_windows.h"

namespace tunovka {

// The media control, version 6.4: its class and its events, as its type library fixes them.
namespace media_control {

inline constexpr wchar_t kClass[] = L"{22D6F312-B0F6-11D0-94AB-0080C74C7E95}";
inline constexpr IID kEvents = {
    0x2D3A4C40, 0xE711, 0x11D0, {0x94, 0xAB, 0, 0x80, 0xC7, 0x4C, 0x7E, 0x95}};

// Properties
inline constexpr DISPID kFileName = 1026, kAutoStart = 1017, kVolume = 19;
inline constexpr DISPID kDuration = 1003, kCurrentPosition = 1027;
inline constexpr DISPID kErrorDescription = 1066, kErrorCode = 1067;
// Methods
inline constexpr DISPID kPlay = 2001, kPause = 2002, kStop = 2003, kPrevious = 2022, kNext = 2023;
inline constexpr DISPID kGetMediaInfoString = 2016;
// Events; the changes tell the old and the new state
inline constexpr DISPID kEndOfStream = 3002, kNewStream = 3008, kError = 3010;
inline constexpr DISPID kOpenStateChange = 3011, kPlayStateChange = 3012;

enum State : long { kStopped = 0, kPaused = 1, kPlaying = 2, kClosed = 8, kOpen = 6 };
enum Info : long { kTitle = 8, kAuthor = 9 };

}  // namespace media_control

// The owner of one variant.
struct Variant : VARIANT {
    Variant() : VARIANT{} {}
    explicit Variant(long number) : Variant() {
        vt = VT_I4;
        lVal = number;
    }
    explicit Variant(double number) : Variant() {
        vt = VT_R8;
        dblVal = number;
    }
    explicit Variant(const std::wstring& text) : Variant() {
        vt = VT_BSTR;
        bstrVal = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    }
    Variant(Variant&& other) noexcept : VARIANT(std::exchange<VARIANT>(other, {})) {}
    ~Variant() { VariantClear(this); }

    // The value as a number, or 0; as text, or "".
    double toNumber() { return changeTo(VT_R8) ? dblVal : 0; }
    std::wstring toText() {
        if (!changeTo(VT_BSTR) || !bstrVal) return {};
        return {bstrVal, SysStringLen(bstrVal)};
    }

  private:
    bool changeTo(VARTYPE type) { return SUCCEEDED(VariantChangeType(this, this, 0, type)); }
};

}  // namespace tunovka
