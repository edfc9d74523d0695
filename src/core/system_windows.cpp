#include "core/system_windows.h"

#include <algorithm>

#include "core/disk_windows.h"
#include "core/errors.h"
#include "core/late_function.h"

namespace tunovka {
namespace {

// Longest path that every system accepts for a folder; files may have 12 more.
constexpr std::size_t kShortPath = 247;
constexpr std::size_t kLongestName = 255;
constexpr wchar_t kExtended[] = L"\\\\?\\";
constexpr wchar_t kExtendedShare[] = L"\\\\?\\UNC\\";

// A colon anywhere but after the drive's letter would name a hidden stream of another file.
bool namesStream(const std::wstring& path, std::size_t start) {
    return path.find(L':', start + 2) != std::wstring::npos;
}

bool hasTooLongName(const std::wstring& path, std::size_t start) {
    for (std::size_t end; start < path.size(); start = end + 1) {
        end = std::min(path.find(L'\\', start), path.size());
        if (end - start > kLongestName) return true;
    }
    return false;
}

// Opens to read and change nothing: locked files and folders too.
bool openForQuestions(const std::wstring& path, DiskFile& file) {
    const std::wstring usable = systemPathOrNone(path);
    return !usable.empty() &&
           file.open(usable, {.rights = 0, .flags = FILE_FLAG_BACKUP_SEMANTICS}) == ERROR_SUCCESS;
}

}  // namespace

std::wstring fullPath(const std::wstring& path) {
    if (path.empty() || path.find(L'\0') != std::wstring::npos) return {};
    std::wstring full(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length =
            GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
        const bool fits = length < full.size();
        full.resize(length);
        if (fits) return full;
    }
}

std::wstring systemPathOrNone(const std::wstring& path) {
    std::wstring full = fullPath(path);
    const bool extended = full.starts_with(kExtended);
    const std::size_t start = extended ? wcslen(kExtended) : 0;
    if (full.empty() || full.starts_with(L"\\\\.\\") || hasTooLongName(full, start) ||
        namesStream(full, start) || full.find_first_of(L"*?<>\"|", start) != std::wstring::npos)
        return {};
    if (full.size() <= kShortPath || extended) return full;
    return full.starts_with(L"\\\\") ? kExtendedShare + full.substr(2) : kExtended + full;
}

std::wstring systemPath(const std::wstring& path) {
    std::wstring usable = systemPathOrNone(path);
    if (usable.empty()) raiseSystemError(ERROR_INVALID_NAME);
    return usable;
}

PathAttributes attributesOf(const std::wstring& path) {
    const std::wstring usable = systemPathOrNone(path);
    if (usable.empty()) return {.error = ERROR_INVALID_NAME};
    WIN32_FILE_ATTRIBUTE_DATA details;
    DWORD error = Disk::details(usable, details);
    if (!error) return {details.dwFileAttributes};
    if (error != ERROR_SHARING_VIOLATION) return {.error = error};
    // Locked against every look at the file itself; its folder still tells.
    WIN32_FIND_DATAW entry;
    error = Disk::entry(usable, entry);
    return {error ? 0 : entry.dwFileAttributes, error};
}

std::optional<FileIdentity> identityOf(const std::wstring& path) {
    DiskFile file;
    BY_HANDLE_FILE_INFORMATION information;
    if (!openForQuestions(path, file) || file.information(information)) return std::nullopt;
    return FileIdentity{information.dwVolumeSerialNumber,
                        joined(information.nFileIndexHigh, information.nFileIndexLow),
                        ticks(information.ftCreationTime)};
}

std::wstring linkTarget(const std::wstring& path) {
    DiskFile file;
    // Newer than the oldest system that the program starts on, which has no links to files.
    static const LateFunction<DWORD WINAPI(HANDLE, LPWSTR, DWORD, DWORD)> finalPath(
        L"kernel32.dll", "GetFinalPathNameByHandleW");
    if (!finalPath || !openForQuestions(path, file)) return path;
    std::wstring target(32768, L'\0');  // no path is longer
    target.resize(finalPath(file.handle(), target.data(), static_cast<DWORD>(target.size()), 0));
    return target.empty() ? path : target;
}

}  // namespace tunovka
