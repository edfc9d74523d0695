#include "player/late_bound.h"

namespace tunovka {
namespace {

constexpr LCID kNeutral = LOCALE_USER_DEFAULT;

// The value changed to another type; empty when it cannot be.
VARIANT changed(const VARIANT& value, VARTYPE type) {
    VARIANT result;
    VariantInit(&result);
    if (FAILED(VariantChangeType(&result, const_cast<VARIANT*>(&value), 0, type)))
        VariantInit(&result);
    return result;
}

std::wstring textOf(BSTR text) {
    return text ? std::wstring(text, SysStringLen(text)) : std::wstring();
}

}  // namespace

long Variant::toLong() const {
    const VARIANT number = changed(value_, VT_I4);
    return number.vt == VT_I4 ? number.lVal : 0;
}

double Variant::toDouble() const {
    const VARIANT number = changed(value_, VT_R8);
    return number.vt == VT_R8 ? number.dblVal : 0;
}

std::wstring Variant::toText() const {
    VARIANT text = changed(value_, VT_BSTR);
    std::wstring result = text.vt == VT_BSTR ? textOf(text.bstrVal) : std::wstring();
    VariantClear(&text);
    return result;
}

bool LateBound::has(const wchar_t* member) const {
    auto* name = const_cast<wchar_t*>(member);
    DISPID id = DISPID_UNKNOWN;
    return object_ && SUCCEEDED(object_->GetIDsOfNames(IID_NULL, &name, 1, kNeutral, &id));
}

HRESULT LateBound::invoke(const wchar_t* member, WORD kind, DISPPARAMS& parameters,
                          Variant* result) const {
    failure_.clear();
    if (!object_) return E_UNEXPECTED;
    auto* name = const_cast<wchar_t*>(member);
    DISPID id = DISPID_UNKNOWN;
    HRESULT done = object_->GetIDsOfNames(IID_NULL, &name, 1, kNeutral, &id);
    if (FAILED(done)) return done;
    EXCEPINFO exception{};
    done = object_->Invoke(id, IID_NULL, kNeutral, kind, &parameters,
                           result ? result->address() : nullptr, &exception, nullptr);
    if (done == DISP_E_EXCEPTION) {
        if (exception.pfnDeferredFillIn) exception.pfnDeferredFillIn(&exception);
        failure_ = textOf(exception.bstrDescription);
        if (FAILED(exception.scode)) done = exception.scode;
        SysFreeString(exception.bstrDescription);
        SysFreeString(exception.bstrSource);
        SysFreeString(exception.bstrHelpFile);
    }
    return done;
}

HRESULT LateBound::put(const wchar_t* property, Variant value) const {
    DISPID assigned = DISPID_PROPERTYPUT;
    DISPPARAMS parameters{value.address(), &assigned, 1, 1};
    return invoke(property, DISPATCH_PROPERTYPUT, parameters, nullptr);
}

Variant LateBound::get(const wchar_t* property) const {
    DISPPARAMS none{};
    Variant result;
    invoke(property, DISPATCH_PROPERTYGET, none, &result);
    return result;
}

Variant LateBound::call(const wchar_t* method, Variant argument) const {
    Variant result;
    call(method, &argument, &result);
    return result;
}

HRESULT LateBound::call(const wchar_t* method, Variant* argument, Variant* result) const {
    DISPPARAMS parameters{};
    if (argument) {
        parameters.rgvarg = argument->address();
        parameters.cArgs = 1;
    }
    return invoke(method, DISPATCH_METHOD, parameters, result);
}

}  // namespace tunovka
