#pragma once

#include <windows.h>
// windows.h first: this one needs its types.
#include <unknwn.h>

namespace tunovka {

// An object that is handed to components: born with one reference, used by one thread.
template <typename... Interfaces>
class ComObject : public Interfaces... {
  public:
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --references_;
        if (left == 0) delete this;
        return left;
    }

  protected:
    virtual ~ComObject() = default;

    // For QueryInterface: hands out the object as one of its interfaces.
    template <typename Interface>
    HRESULT handOut(void** result) {
        *result = static_cast<Interface*>(this);
        AddRef();
        return S_OK;
    }

  private:
    ULONG references_ = 1;
};

// An object with one interface and nothing else.
template <typename Interface>
class SingleComObject : public ComObject<Interface> {
  public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** result) final {
        if (!result) return E_POINTER;
        if (iid == __uuidof(IUnknown) || iid == __uuidof(Interface))
            return this->template handOut<Interface>(result);
        *result = nullptr;
        return E_NOINTERFACE;
    }
};

}  // namespace tunovka
