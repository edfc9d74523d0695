#pragma once

#include <windows.h>

#include <cstring>
#include <string>

#include "core/file_system.h"
#include "core/handle.h"
#include "support/beside_program.h"
#include "support/watched_player.h"

// Programs that stand in for external players, and the registry in which players are found.

namespace tunovka {

// How a stand-in tells that it was started: normally, minimised.
inline const std::wstring kNormal = std::to_wstring(SW_SHOWNORMAL) + L"|";
inline const std::wstring kMinimized = std::to_wstring(SW_SHOWMINIMIZED) + L"|";

// A copy of the stand-in under a name of its own.
class Recorder {
  public:
    explicit Recorder(const std::wstring& path) : path_(path) {
        CopyFileW(besideThisProgram(L"command_line_recorder.exe").c_str(), path.c_str(), FALSE);
    }

    const std::wstring& path() const { return path_; }

    // "show mode|command line", "" when it was not started.
    std::wstring started() const {
        const std::wstring record = path_ + L".txt";
        if (!WatchedPlayer::until([&] { return FileSystemObject::FileExists(record); })) return {};
        const std::string bytes = FileSystemObject::readAll(record);
        DeleteFileW(record.c_str());
        std::wstring text(bytes.size() / sizeof(wchar_t), L'\0');
        std::memcpy(text.data(), bytes.data(), text.size() * sizeof(wchar_t));
        return text;
    }

  private:
    std::wstring path_;
};

// A value in the registry that is there for the length of a test; the former key is gone after it.
class TestKey {
  public:
    TestKey(HKEY root, const std::wstring& path, const wchar_t* name, const std::wstring& text)
        : root_(root), path_(path) {
        RegistryKey key;
        RegCreateKeyExW(root, path.c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, key.receive(),
                        nullptr);
        RegSetValueExW(key.get(), name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                       static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
    }
    ~TestKey() { RegDeleteTreeW(root_, path_.c_str()); }

  private:
    HKEY root_;
    std::wstring path_;
};

}  // namespace tunovka
