#pragma once

#include <windows.h>

#include <functional>
#include <string>

// The machine around a test: registry values, and what Windows programs cannot do under Wine but
// the machine below can.

namespace tunovka {

// A value in the registry for the length of a test. The whole root is meanwhile a key of the tests'
// own, for this process alone: what the person's registry holds is neither seen nor touched.
class TestKey {
  public:
    TestKey(HKEY root, const std::wstring& path, const wchar_t* name, const std::wstring& text)
        : root_(root) {
        HKEY instead = nullptr;
        RegCreateKeyW(HKEY_CURRENT_USER, kPlace, &instead);
        RegOverridePredefKey(root, instead);
        RegCloseKey(instead);
        RegSetKeyValueW(root, path.c_str(), name, REG_SZ, text.c_str(),
                        static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
    }
    TestKey(const TestKey&) = delete;
    TestKey& operator=(const TestKey&) = delete;
    ~TestKey() {
        RegOverridePredefKey(root_, nullptr);
        RegDeleteTreeW(HKEY_CURRENT_USER, kPlace);
    }

  private:
    static constexpr wchar_t kPlace[] = L"Software\\Tunovka tests";

    HKEY root_;
};

// The path on the machine below Wine, "" on a real Windows.
inline std::string machinePath(const std::wstring& path) {
    using Ask = char*(CDECL*)(const wchar_t*);
    const auto ask = reinterpret_cast<Ask>(reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "wine_get_unix_file_name")));
    char* const answer = ask ? ask(path.c_str()) : nullptr;
    const std::string result = answer ? answer : "";
    if (answer) HeapFree(GetProcessHeap(), 0, answer);
    return result;
}

// Runs a shell command of the machine below until `done` says that it has worked; false when it
// has not within half a minute. Wine may run it twice and cannot tell its end.
inline bool onMachine(const std::string& command, const std::function<bool()>& done) {
    STARTUPINFOA start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    std::string line = "Z:\\bin\\sh -c \"" + command + " 2>/dev/null\"";
    if (!CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                        &process))
        return false;
    // The handles that Wine gives for such a program mean nothing: closing them has closed this
    // program's own output.
    const DWORD from = GetTickCount();
    while (!done() && GetTickCount() - from < 30000) Sleep(5);
    return done();
}

// Makes a symbolic link to a file or folder; false where this account or system cannot. The last
// names of both are to be ASCII.
inline bool makeLink(const std::wstring& link, const std::wstring& target, bool folder) {
    const auto there = [&] { return GetFileAttributesW(link.c_str()) != INVALID_FILE_ATTRIBUTES; };
    const std::string path = machinePath(link);
    if (!path.empty())
        return onMachine("ln -sn '" + machinePath(target) + "' '" + path + "'", there);
    CreateSymbolicLinkW(link.c_str(), target.c_str(), folder ? SYMBOLIC_LINK_FLAG_DIRECTORY : 0);
    return there();
}

}  // namespace tunovka
