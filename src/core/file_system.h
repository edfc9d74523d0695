#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "core/errors.h"

namespace tunovka {

// What a folder's enumeration tells of one entry.
struct FolderEntry {
    std::wstring name;
    std::wstring shortName;    // 8.3 name, "" where the volume keeps none
    std::uint32_t attributes;  // FILE_ATTRIBUTE_…
    bool isFolder() const { return (attributes & 0x10) != 0; }
};

// As the system numbers them (DRIVE_…).
enum class DriveType { Unknown = 0, Removable = 2, Fixed, Network, CdRom, RamDisk };

// Local date of a file; all zero when the system cannot give one.
struct FileDate {
    int year = 0, month = 0, day = 0;
};

struct FileDetails {
    std::uint64_t size = 0;  // bytes
    std::uint32_t attributes = 0;
    FileDate created, modified, accessed;
};

// Tells how far a copy is; returning false stops it (the half-made copy is removed).
using CopyProgress = std::function<bool(std::uint64_t done, std::uint64_t total)>;

// What an operation calls while it runs, on its thread. Each may be empty.
struct TransferHooks {
    CopyProgress progress{};
    // Whoever in the program has a file open closes it: nothing else stands any more against
    // replacing, moving or deleting it.
    std::function<void(const std::wstring& path)> closeFile{};
};

// A move whose copy is in place, but whose source could not be deleted.
struct SourceLeft : RuntimeError {
    explicit SourceLeft(const RuntimeError& failure) : RuntimeError(failure) {}
};

// The file operations that the program uses, over Win32, with the meanings and error numbers of
// the scripting file-system object. Paths are taken as they are (no wildcards), also longer than
// 260 characters. Every failure raises a RuntimeError whose source is "FileSystemObject".
namespace FileSystemObject {

// Whether a file, not a folder, is there. Denied: it may not even be looked at, so that nobody can
// say that it is missing; it cannot be played either. "" is missing.
enum class Presence { Missing, There, Denied };
Presence presence(const std::wstring& path);
bool FileExists(const std::wstring& path);  // There
bool FolderExists(const std::wstring& path);
bool IsDriveReady(const std::wstring& drive);  // "E:", with or without "\"
DriveType driveType(const std::wstring& drive);

// All entries of a folder but "." and "..", in the system's order.
std::vector<FolderEntry> listFolder(const std::wstring& folder);

// The path of a file with its name as the disk spells it; where no file is, as it came.
std::wstring asOnDisk(const std::wstring& path);

FileDetails details(const std::wstring& path);
std::uint32_t attributes(const std::wstring& path);
void setAttributes(const std::wstring& path, std::uint32_t attributes);

// The whole content; a file that gets shorter meanwhile raises kPathFileAccess.
std::string readAll(const std::wstring& path);

// At most `count` bytes from `offset` (bytes from the start); fewer at the file's end.
std::string readPart(const std::wstring& path, std::uint64_t offset, std::size_t count);

// Replaces the file whole: a failure, whose description names the path, leaves the old one as it
// was and no leftover. A read-only target raises kPermissionDenied, a link is written through to
// what it names, a hidden target stays hidden.
void writeWhole(const std::wstring& path, std::string_view content);

// Copies a file with all that belongs to it, replacing the destination (which may be a folder
// ending in "\") only when the copy is whole; an old destination's rights stay. A file that is its
// own destination raises kPermissionDenied. False when the progress stopped it.
bool copyFile(const std::wstring& source, const std::wstring& destination,
              const TransferHooks& hooks = {});

// Moves a file. The destination must not exist (kFileAlreadyExists) unless `replace`; across
// volumes the source is deleted when the copy is whole: where that fails both are there
// (SourceLeft).
bool moveFile(const std::wstring& source, const std::wstring& destination, bool replace = false,
              const TransferHooks& hooks = {});

// Without `force` a read-only file raises kPermissionDenied.
void deleteFile(const std::wstring& path, bool force = false, const TransferHooks& hooks = {});

// True when both name one file (volume and file index), whatever the spelling.
bool sameFile(const std::wstring& one, const std::wstring& other);

}  // namespace FileSystemObject
}  // namespace tunovka
