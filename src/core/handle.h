#pragma once

#include <windows.h>

#include <utility>

namespace tunovka {

// The move-only owner of one object of the system; Kind tells how it is given back.
template <typename Kind>
class Handle {
  public:
    using Value = typename Kind::Value;

    Handle() = default;
    explicit Handle(Value value) : value_(value) {}
    Handle(Handle&& other) noexcept : value_(other.release()) {}
    Handle& operator=(Handle&& other) noexcept {
        if (this != &other) reset(other.release());
        return *this;
    }
    ~Handle() { reset(); }

    explicit operator bool() const { return value_ != none(); }
    Value get() const { return value_; }
    Value release() { return std::exchange(value_, none()); }
    void reset(Value value = none()) {
        if (value_ != none()) Kind::close(value_);
        value_ = value;
    }
    // For functions of the system that hand their object out through a pointer.
    Value* receive() {
        reset();
        return &value_;
    }

  private:
    static Value none() { return Kind::none(); }
    Value value_ = none();
};

namespace handle_kinds {

template <typename T>
struct NullIsNone {
    using Value = T;
    static T none() { return nullptr; }
};
struct Kernel : NullIsNone<HANDLE> {
    static void close(HANDLE handle) { CloseHandle(handle); }
};
struct File {
    using Value = HANDLE;
    static HANDLE none() { return INVALID_HANDLE_VALUE; }
    static void close(HANDLE handle) { CloseHandle(handle); }
};
struct Find : File {
    static void close(HANDLE handle) { FindClose(handle); }
};
template <typename T>
struct Gdi : NullIsNone<T> {
    static void close(T object) { DeleteObject(object); }
};
struct SystemWindow : NullIsNone<HWND> {
    static void close(HWND window) { DestroyWindow(window); }
};
template <typename T>
struct Com : NullIsNone<T*> {
    static void close(T* object) { object->Release(); }
};

}  // namespace handle_kinds

using KernelHandle = Handle<handle_kinds::Kernel>;  // process, thread, event
using FileHandle = Handle<handle_kinds::File>;
using FindHandle = Handle<handle_kinds::Find>;
using Bitmap = Handle<handle_kinds::Gdi<HBITMAP>>;
using Font = Handle<handle_kinds::Gdi<HFONT>>;
using SystemWindow = Handle<handle_kinds::SystemWindow>;

// The owner of one reference to a COM object.
template <typename T>
class ComPtr : public Handle<handle_kinds::Com<T>> {
  public:
    using Handle<handle_kinds::Com<T>>::Handle;

    // One more reference to an object that somebody else owns.
    static ComPtr shared(T* object) {
        if (object) object->AddRef();
        return ComPtr(object);
    }
    T* operator->() const { return this->get(); }
    void** receiveVoid() { return reinterpret_cast<void**>(this->receive()); }

    // The object's other interface; none when it has not got it.
    template <typename Other>
    ComPtr<Other> as() const {
        ComPtr<Other> other;
        if (*this) this->get()->QueryInterface(__uuidof(Other), other.receiveVoid());
        return other;
    }
};

}  // namespace tunovka
