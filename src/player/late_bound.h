#pragma once

#include <windows.h>
// windows.h first: this one needs its types.
#include <oleauto.h>

#include <string>
#include <utility>

#include "core/handle.h"

namespace tunovka {

// The owner of one variant.
class Variant {
  public:
    Variant() = default;
    explicit Variant(long number) : Variant() {
        value_.vt = VT_I4;
        value_.lVal = number;
    }
    explicit Variant(double number) : Variant() {
        value_.vt = VT_R8;
        value_.dblVal = number;
    }
    explicit Variant(bool truth) : Variant() {
        value_.vt = VT_BOOL;
        value_.boolVal = truth ? VARIANT_TRUE : VARIANT_FALSE;
    }
    explicit Variant(const std::wstring& text) : Variant() {
        value_.vt = VT_BSTR;
        value_.bstrVal = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    }
    Variant(Variant&& other) noexcept : Variant() { std::swap(value_, other.value_); }
    ~Variant() { VariantClear(&value_); }

    VARIANT* address() { return &value_; }

    // The value as a number, or 0; as text, or "".
    long toLong() const;
    double toDouble() const;
    std::wstring toText() const;

  private:
    VARIANT value_{};
};

// An object whose members are found by their names at run time. A member that is missing or that
// fails gives a failure code and no exception; the object's own words for it stay in failure().
class LateBound {
  public:
    LateBound() = default;
    explicit LateBound(ComPtr<IDispatch> object) : object_(std::move(object)) {}

    bool has(const wchar_t* member) const;

    HRESULT put(const wchar_t* property, Variant value) const;
    Variant get(const wchar_t* property) const;
    HRESULT call(const wchar_t* method) const { return call(method, nullptr, nullptr); }
    Variant call(const wchar_t* method, Variant argument) const;

    // What the object said of the last call that failed; "" when it said nothing.
    const std::wstring& failure() const { return failure_; }

  private:
    HRESULT call(const wchar_t* method, Variant* argument, Variant* result) const;
    HRESULT invoke(const wchar_t* member, WORD kind, DISPPARAMS& parameters, Variant* result) const;

    ComPtr<IDispatch> object_;
    mutable std::wstring failure_;
};

}  // namespace tunovka
