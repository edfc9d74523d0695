#pragma once

#include <windows.h>

#include <string>

#include "core/handle.h"

namespace tunovka {

// A value in the registry that is there for the length of a test; its key is gone after it.
class TestKey {
  public:
    TestKey(HKEY root, const std::wstring& path, const wchar_t* name, DWORD type, const void* data,
            std::size_t size)
        : root_(root), path_(path) {
        RegistryKey key;
        RegCreateKeyExW(root, path.c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, key.receive(),
                        nullptr);
        RegSetValueExW(key.get(), name, 0, type, static_cast<const BYTE*>(data),
                       static_cast<DWORD>(size));
    }
    TestKey(HKEY root, const std::wstring& path, const wchar_t* name, const std::wstring& text)
        : TestKey(root, path, name, REG_SZ, text.c_str(), (text.size() + 1) * sizeof(wchar_t)) {}
    TestKey(const TestKey&) = delete;
    TestKey& operator=(const TestKey&) = delete;
    ~TestKey() { RegDeleteTreeW(root_, path_.c_str()); }

  private:
    HKEY root_;
    std::wstring path_;
};

}  // namespace tunovka
