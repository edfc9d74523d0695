#pragma once

#include <windows.h>

#include <cstdint>
#include <optional>
#include <string>

namespace tunovka {

// The two halves in which the system gives sizes and times.
inline std::uint64_t joined(DWORD high, DWORD low) {
    return std::uint64_t{high} << 32 | low;
}
inline std::uint64_t ticks(const FILETIME& time) {  // of 100 ns
    return joined(time.dwHighDateTime, time.dwLowDateTime);
}
inline std::uint64_t ticksNow() {
    FILETIME now;
    GetSystemTimeAsFileTime(&now);
    return ticks(now);
}

// The full path as the system normalises it; "" for a text that is no path ("", a NUL inside).
std::wstring fullPath(const std::wstring& path);

// The same in the form that a call to the system takes: long ones with the prefix that lifts the
// limit of 260 characters. Raises kBadFileName for a text that is no path, for wildcards, device
// names ("NUL") and a name of more than 255 characters.
std::wstring systemPath(const std::wstring& path);

// The same for a file that is to be there: raises kFileNotFound or kPathNotFound.
std::wstring requireFile(const std::wstring& path);

// As systemPath(), but "" instead of an error.
std::wstring systemPathOrNone(const std::wstring& path);

// What tells one file or folder from every other, whatever the path that leads to it.
struct FileIdentity {
    DWORD volume = 0;
    std::uint64_t index = 0;
    // Some systems number their volumes all alike: the time of creation tells those apart.
    std::uint64_t created = 0;
    // NOLINTNEXTLINE(modernize-use-nullptr): there is no pointer
    auto operator<=>(const FileIdentity&) const = default;
};

// nullopt when the path cannot be opened.
std::optional<FileIdentity> identityOf(const std::wstring& path);

// Where an existing file really lies, links followed; `path` itself where nobody can tell.
std::wstring linkTarget(const std::wstring& path);

// The attributes of a file or folder, also of a locked one; 0 with the error where nothing is.
struct PathAttributes {
    DWORD attributes = 0;
    DWORD error = ERROR_SUCCESS;
};
PathAttributes attributesOf(const std::wstring& path);

}  // namespace tunovka
