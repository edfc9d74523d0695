#include "core/system_windows.h"

#include <algorithm>

#include "core/errors.h"
#include "core/handle.h"
#include "core/late_function.h"

namespace tunovka {
namespace {

// Longest path that every system accepts for a folder; files may have 12 more.
constexpr std::size_t kShortPath = 247;
constexpr DWORD kDiskQuotaExceeded = 1295;  // not in every header set
constexpr std::size_t kLongestName = 255;
constexpr wchar_t kExtended[] = L"\\\\?\\";
constexpr wchar_t kExtendedShare[] = L"\\\\?\\UNC\\";

bool startsWith(const std::wstring& text, const wchar_t* start) {
    return text.compare(0, wcslen(start), start) == 0;
}

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

// A handle that reads and changes nothing: it opens locked files and folders too.
FileHandle openedForQuestions(const std::wstring& path) {
    const std::wstring usable = systemPathOrNone(path);
    if (usable.empty()) return {};
    return FileHandle(CreateFileW(usable.c_str(), 0,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                  OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
}

}  // namespace

int errorNumberOf(DWORD systemError) {
    switch (systemError) {
        case ERROR_FILE_NOT_FOUND:
            return kFileNotFound;
        case ERROR_PATH_NOT_FOUND:
        case ERROR_DIRECTORY:
        case ERROR_INVALID_DRIVE:
        case ERROR_NOT_READY:
        case ERROR_BAD_NETPATH:
        case ERROR_BAD_NET_NAME:
        case ERROR_BAD_DEV_TYPE:  // of a network path
        case ERROR_NETWORK_UNREACHABLE:
        case ERROR_DEVICE_NOT_CONNECTED:
        case ERROR_UNRECOGNIZED_VOLUME:
            return kPathNotFound;
        case ERROR_FILE_EXISTS:
        case ERROR_ALREADY_EXISTS:
            return kFileAlreadyExists;
        case ERROR_DISK_FULL:
        case ERROR_HANDLE_DISK_FULL:
        case kDiskQuotaExceeded:
            return kDiskFull;
        case ERROR_ACCESS_DENIED:
        case ERROR_SHARING_VIOLATION:
        case ERROR_LOCK_VIOLATION:
        case ERROR_WRITE_PROTECT:
        case ERROR_NETWORK_ACCESS_DENIED:
        case ERROR_USER_MAPPED_FILE:
        case ERROR_DELETE_PENDING:
            return kPermissionDenied;
        case ERROR_INVALID_NAME:
        case ERROR_BAD_PATHNAME:
        case ERROR_FILENAME_EXCED_RANGE:
            return kBadFileName;
        default:
            return kPathFileAccess;
    }
}

void raiseSystemError(const wchar_t* source, DWORD systemError) {
    throw RuntimeError(errorNumberOf(systemError), {}, source);
}

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
    const bool extended = startsWith(full, kExtended);
    const std::size_t start = extended ? wcslen(kExtended) : 0;
    if (full.empty() || startsWith(full, L"\\\\.\\") || hasTooLongName(full, start) ||
        namesStream(full, start) || full.find_first_of(L"*?<>\"|", start) != std::wstring::npos)
        return {};
    if (full.size() <= kShortPath || extended) return full;
    return startsWith(full, L"\\\\") ? kExtendedShare + full.substr(2) : kExtended + full;
}

std::wstring systemPath(const std::wstring& path) {
    std::wstring usable = systemPathOrNone(path);
    if (usable.empty()) throw RuntimeError(kBadFileName, {}, L"FileSystemObject");
    return usable;
}

DWORD attributesOf(const std::wstring& path) {
    const std::wstring usable = systemPathOrNone(path);
    if (usable.empty()) {
        SetLastError(ERROR_INVALID_NAME);
        return INVALID_FILE_ATTRIBUTES;
    }
    const DWORD attributes = GetFileAttributesW(usable.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES || GetLastError() != ERROR_SHARING_VIOLATION)
        return attributes;
    // Locked against every look at the file itself; its folder still tells.
    WIN32_FIND_DATAW entry;
    const FindHandle search(FindFirstFileW(usable.c_str(), &entry));
    return search ? entry.dwFileAttributes : INVALID_FILE_ATTRIBUTES;
}

bool identityOf(const std::wstring& path, FileIdentity& identity) {
    const FileHandle file = openedForQuestions(path);
    BY_HANDLE_FILE_INFORMATION information;
    if (!file || !GetFileInformationByHandle(file.get(), &information)) return false;
    identity.volume = information.dwVolumeSerialNumber;
    identity.index = joined(information.nFileIndexHigh, information.nFileIndexLow);
    identity.created =
        joined(information.ftCreationTime.dwHighDateTime, information.ftCreationTime.dwLowDateTime);
    return true;
}

std::wstring linkTarget(const std::wstring& path) {
    const FileHandle file = openedForQuestions(path);
    // Newer than the oldest system that the program starts on, which has no links to files.
    static const LateFunction<DWORD WINAPI(HANDLE, LPWSTR, DWORD, DWORD)> finalPath(
        L"kernel32.dll", "GetFinalPathNameByHandleW");
    if (!file || !finalPath) return path;
    std::wstring target(32768, L'\0');  // no path is longer
    target.resize(finalPath(file.get(), target.data(), static_cast<DWORD>(target.size()), 0));
    return target.empty() ? path : target;
}

std::wstring unfinishedName(const std::wstring& path) {
    static unsigned counter = 0;
    const std::wstring full = systemPath(path);
    const std::wstring folder = full.substr(0, full.find_last_of(L'\\') + 1);
    for (;;) {
        wchar_t name[40];
        wsprintfW(name, L"~tunovka-%08x-%04x.tmp", GetCurrentProcessId() ^ GetTickCount(),
                  ++counter & 0xFFFF);
        std::wstring unfinished = systemPath(folder + name);
        if (GetFileAttributesW(unfinished.c_str()) == INVALID_FILE_ATTRIBUTES) return unfinished;
    }
}

}  // namespace tunovka
