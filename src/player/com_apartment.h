#pragma once

#include <windows.h>
// windows.h first: this one needs its types.
#include <objbase.h>

namespace tunovka {

// COM, made ready on this thread for as long as the object lives; nested ones are counted. On a
// thread that has another kind of apartment already, that one serves.
class ComApartment {
  public:
    explicit ComApartment(DWORD kind = COINIT_APARTMENTTHREADED)
        : result_(CoInitializeEx(nullptr, kind)) {}
    ~ComApartment() {
        if (SUCCEEDED(result_)) CoUninitialize();
    }
    ComApartment(const ComApartment&) = delete;
    ComApartment& operator=(const ComApartment&) = delete;

  private:
    HRESULT result_;
};

}  // namespace tunovka
