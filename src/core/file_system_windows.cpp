#include <windows.h>

#include "core/disk_windows.h"
#include "core/errors.h"
#include "core/file_system.h"
#include "core/paths.h"
#include "core/system_windows.h"

namespace tunovka {
namespace {

constexpr std::uint64_t kLargestContent = 1u << 30;  // more does not fit a 32-bit program's memory

std::wstring rootOf(const std::wstring& drive) {
    return withBackslash(drive.size() >= 2 && drive[1] == L':' ? drive.substr(0, 2) : drive);
}

FileDate localDate(const FILETIME& time) {
    SYSTEMTIME universal, local;
    if ((time.dwHighDateTime == 0 && time.dwLowDateTime == 0) ||
        !FileTimeToSystemTime(&time, &universal) ||
        !SystemTimeToTzSpecificLocalTime(nullptr, &universal, &local))
        return {};
    return {local.wYear, local.wMonth, local.wDay};
}

DiskFile openForReading(const std::wstring& path) {
    DiskFile file;
    require(file.open(requireFile(path), {.rights = GENERIC_READ}));
    return file;
}

// At most `count` bytes from where the file stands; fewer at its end.
std::string readBytes(const DiskFile& file, std::size_t count) {
    std::string bytes(count, '\0');
    std::size_t filled = 0;
    while (filled < count) {
        DWORD moved = static_cast<DWORD>(count - filled);
        require(file.read(bytes.data() + filled, moved));
        if (moved == 0) break;
        filled += moved;
    }
    bytes.resize(filled);
    return bytes;
}

}  // namespace

std::wstring requireFile(const std::wstring& path) {
    std::wstring file = systemPath(path);
    const auto [attributes, error] = attributesOf(path);
    require(error);
    if (attributes & FILE_ATTRIBUTE_DIRECTORY) raiseSystemError(ERROR_FILE_NOT_FOUND);
    return file;
}

namespace FileSystemObject {

Presence presence(const std::wstring& path) {
    if (path.empty() || path.back() == L'\\' || path.back() == L'/') return Presence::Missing;
    const auto [attributes, error] = attributesOf(path);
    if (error) return error == ERROR_ACCESS_DENIED ? Presence::Denied : Presence::Missing;
    return attributes & FILE_ATTRIBUTE_DIRECTORY ? Presence::Missing : Presence::There;
}

bool FileExists(const std::wstring& path) {
    return presence(path) == Presence::There;
}

bool FolderExists(const std::wstring& path) {
    return attributesOf(path).attributes & FILE_ATTRIBUTE_DIRECTORY;
}

bool IsDriveReady(const std::wstring& drive) {
    if (drive.empty()) return false;
    const std::wstring root = rootOf(drive);
    std::wstring label;
    return !Disk::label(root, label) && !attributesOf(root).error;
}

DriveType driveType(const std::wstring& drive) {
    return drive.empty() ? DriveType::Unknown : DriveType(Disk::driveType(rootOf(drive)));
}

std::vector<FolderEntry> listFolder(const std::wstring& folder) {
    if (folder.empty()) raiseSystemError(ERROR_PATH_NOT_FOUND);
    std::vector<FolderEntry> entries;
    const DWORD error = Disk::list(systemPath(folder), [&](const WIN32_FIND_DATAW& entry) {
        entries.push_back({entry.cFileName, entry.cAlternateFileName, entry.dwFileAttributes});
        return true;
    });
    // The root of an empty drive has not even "." and "..".
    if (error == ERROR_FILE_NOT_FOUND && FolderExists(folder)) return {};
    require(error == ERROR_FILE_NOT_FOUND ? DWORD{ERROR_PATH_NOT_FOUND} : error);
    return entries;
}

std::wstring asOnDisk(const std::wstring& path) {
    const std::wstring usable = systemPathOrNone(path);
    if (usable.empty()) return path;
    WIN32_FIND_DATAW entry;
    if (Disk::entry(usable, entry) || (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY))
        return path;
    return path.substr(0, path.find_last_of(L"\\/:") + 1) + entry.cFileName;
}

FileDetails details(const std::wstring& path) {
    // Of what a link names, not of the link.
    const std::wstring file = linkTarget(requireFile(path));
    WIN32_FILE_ATTRIBUTE_DATA data;
    require(Disk::details(file, data));
    return {joined(data.nFileSizeHigh, data.nFileSizeLow), data.dwFileAttributes,
            localDate(data.ftCreationTime), localDate(data.ftLastWriteTime),
            localDate(data.ftLastAccessTime)};
}

std::uint32_t attributes(const std::wstring& path) {
    const auto [attributes, error] = attributesOf(path);
    require(error);
    return attributes;
}

void setAttributes(const std::wstring& path, std::uint32_t attributes) {
    require(Disk::setAttributes(systemPath(path), attributes));
}

std::string readAll(const std::wstring& path) {
    const DiskFile file = openForReading(path);
    BY_HANDLE_FILE_INFORMATION information;
    require(file.information(information));
    const std::uint64_t size = joined(information.nFileSizeHigh, information.nFileSizeLow);
    if (size > kLargestContent) raiseSystemError(ERROR_NOT_ENOUGH_MEMORY);
    std::string content = readBytes(file, static_cast<std::size_t>(size));
    if (content.size() < size) raiseSystemError(ERROR_HANDLE_EOF);  // it was cut
    return content;
}

std::string readPart(const std::wstring& path, std::uint64_t offset, std::size_t count) {
    const DiskFile file = openForReading(path);
    require(file.seek(offset));
    return readBytes(file, count);
}

bool sameFile(const std::wstring& one, const std::wstring& other) {
    const auto first = identityOf(one);
    return first && first == identityOf(other);
}

}  // namespace FileSystemObject
}  // namespace tunovka
