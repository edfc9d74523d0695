#include <windows.h>

#include "core/disk_steps_windows.h"
#include "core/errors.h"
#include "core/file_system.h"
#include "core/handle.h"
#include "core/paths.h"
#include "core/system_windows.h"

namespace tunovka {
namespace {

constexpr wchar_t kSource[] = L"FileSystemObject";
constexpr std::uint64_t kLargestContent = 1u << 30;  // more does not fit a 32-bit program's memory

DiskFault& fault() {
    static DiskFault installed;
    return installed;
}

std::wstring rootOf(const std::wstring& drive) {
    return withBackslash(drive.size() >= 2 && drive[1] == L':' ? drive.substr(0, 2) : drive);
}

FileDate localDate(const FILETIME& time) {
    SYSTEMTIME universal, local;
    if ((time.dwHighDateTime == 0 && time.dwLowDateTime == 0) ||
        !FileTimeToSystemTime(&time, &universal) ||
        !SystemTimeToTzSpecificLocalTime(nullptr, &universal, &local))
        return {};
    return {local.wYear, local.wMonth, local.wDay, local.wHour, local.wMinute, local.wSecond};
}

FileHandle openForReading(const std::wstring& path) {
    diskStep(DiskStep::Read, path);
    const std::wstring file = requireFile(path);
    FileHandle handle(CreateFileW(file.c_str(), GENERIC_READ,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                  OPEN_EXISTING, 0, nullptr));
    if (!handle) raiseSystemError(kSource);
    return handle;
}

// Fills as much of the buffer as the file still has.
void readInto(const FileHandle& file, std::string& buffer) {
    std::size_t filled = 0;
    while (filled < buffer.size()) {
        DWORD read = 0;
        const DWORD wanted = static_cast<DWORD>(buffer.size() - filled);
        if (!ReadFile(file.get(), buffer.data() + filled, wanted, &read, nullptr))
            raiseSystemError(kSource);
        if (read == 0) break;
        filled += read;
    }
    buffer.resize(filled);
}

}  // namespace

void diskStep(DiskStep step, const std::wstring& path) {
    if (fault()) fault()(step, path);
}

std::wstring requireFile(const std::wstring& path) {
    std::wstring file = systemPath(path);
    const DWORD attributes = attributesOf(path);
    if (attributes == INVALID_FILE_ATTRIBUTES) raiseSystemError(kSource);
    if (attributes & FILE_ATTRIBUTE_DIRECTORY) raiseSystemError(kSource, ERROR_FILE_NOT_FOUND);
    return file;
}

namespace FileSystemObject {

void setFault(DiskFault replacement) {
    fault() = std::move(replacement);
}

bool FileExists(const std::wstring& path) {
    return !path.empty() && path.back() != L'\\' && path.back() != L'/' &&
           !(attributesOf(path) & FILE_ATTRIBUTE_DIRECTORY);  // set in "invalid" too
}

bool FolderExists(const std::wstring& path) {
    const DWORD attributes = attributesOf(path);
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
}

bool IsDriveReady(const std::wstring& drive) {
    const std::wstring root = drive.empty() ? std::wstring() : rootOf(drive);
    return !root.empty() &&
           GetVolumeInformationW(root.c_str(), nullptr, 0, nullptr, nullptr, nullptr, nullptr, 0) &&
           attributesOf(root) != INVALID_FILE_ATTRIBUTES;
}

DriveType driveType(const std::wstring& drive) {
    switch (drive.empty() ? DRIVE_UNKNOWN : GetDriveTypeW(rootOf(drive).c_str())) {
        case DRIVE_REMOVABLE:
            return DriveType::Removable;
        case DRIVE_FIXED:
            return DriveType::Fixed;
        case DRIVE_REMOTE:
            return DriveType::Network;
        case DRIVE_CDROM:
            return DriveType::CdRom;
        case DRIVE_RAMDISK:
            return DriveType::RamDisk;
        default:
            return DriveType::Unknown;
    }
}

std::vector<FolderEntry> listFolder(const std::wstring& folder) {
    diskStep(DiskStep::Read, folder);
    if (folder.empty()) raiseSystemError(kSource, ERROR_PATH_NOT_FOUND);
    WIN32_FIND_DATAW entry;
    const std::wstring pattern = withBackslash(systemPath(folder)) + L"*";
    const FindHandle search(FindFirstFileExW(pattern.c_str(), FindExInfoStandard, &entry,
                                             FindExSearchNameMatch, nullptr, 0));
    if (!search) {
        const DWORD error = GetLastError();
        // The root of an empty drive has not even "." and "..".
        if (error == ERROR_FILE_NOT_FOUND && FolderExists(folder)) return {};
        raiseSystemError(kSource, error == ERROR_FILE_NOT_FOUND ? ERROR_PATH_NOT_FOUND : error);
    }
    std::vector<FolderEntry> entries;
    do {
        if (wcscmp(entry.cFileName, L".") != 0 && wcscmp(entry.cFileName, L"..") != 0)
            entries.push_back({entry.cFileName, entry.cAlternateFileName, entry.dwFileAttributes,
                               joined(entry.nFileSizeHigh, entry.nFileSizeLow)});
    } while (FindNextFileW(search.get(), &entry));
    if (GetLastError() != ERROR_NO_MORE_FILES) raiseSystemError(kSource);
    return entries;
}

std::wstring asOnDisk(const std::wstring& path) {
    const std::wstring usable = systemPathOrNone(path);
    if (usable.empty()) return path;
    WIN32_FIND_DATAW entry;
    const FindHandle search(FindFirstFileW(usable.c_str(), &entry));
    if (!search || (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)) return path;
    return path.substr(0, path.find_last_of(L"\\/:") + 1) + entry.cFileName;
}

std::wstring shortName(const std::wstring& path) {
    WIN32_FIND_DATAW entry;
    const FindHandle search(FindFirstFileW(systemPath(path).c_str(), &entry));
    if (!search) raiseSystemError(kSource);
    return entry.cAlternateFileName[0] ? entry.cAlternateFileName : entry.cFileName;
}

FileDetails details(const std::wstring& path) {
    diskStep(DiskStep::Read, path);
    // Of what a link names, not of the link.
    const std::wstring file = linkTarget(requireFile(path));
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (!GetFileAttributesExW(file.c_str(), GetFileExInfoStandard, &data))
        raiseSystemError(kSource);
    FileDetails details;
    details.size = joined(data.nFileSizeHigh, data.nFileSizeLow);
    details.attributes = data.dwFileAttributes;
    details.created = localDate(data.ftCreationTime);
    details.modified = localDate(data.ftLastWriteTime);
    details.accessed = localDate(data.ftLastAccessTime);
    return details;
}

std::uint32_t attributes(const std::wstring& path) {
    systemPath(path);
    const DWORD attributes = attributesOf(path);
    if (attributes == INVALID_FILE_ATTRIBUTES) raiseSystemError(kSource);
    return attributes;
}

void setAttributes(const std::wstring& path, std::uint32_t attributes) {
    diskStep(DiskStep::SetAttributes, path);
    if (!SetFileAttributesW(systemPath(path).c_str(), attributes)) raiseSystemError(kSource);
}

std::string readAll(const std::wstring& path) {
    const FileHandle file = openForReading(path);
    LARGE_INTEGER size;
    if (!GetFileSizeEx(file.get(), &size)) raiseSystemError(kSource);
    if (static_cast<std::uint64_t>(size.QuadPart) > kLargestContent)
        throw RuntimeError(kPathFileAccess, {}, kSource);
    std::string content(static_cast<std::size_t>(size.QuadPart), '\0');
    readInto(file, content);
    return content;
}

std::string readPart(const std::wstring& path, std::uint64_t offset, std::size_t count) {
    const FileHandle file = openForReading(path);
    LARGE_INTEGER place;
    place.QuadPart = static_cast<LONGLONG>(offset);
    if (!SetFilePointerEx(file.get(), place, nullptr, FILE_BEGIN)) raiseSystemError(kSource);
    std::string part(count, '\0');
    readInto(file, part);
    return part;
}

bool sameFile(const std::wstring& one, const std::wstring& other) {
    FileIdentity first, second;
    return identityOf(one, first) && identityOf(other, second) && first == second;
}

}  // namespace FileSystemObject
}  // namespace tunovka
