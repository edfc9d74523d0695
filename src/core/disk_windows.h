#pragma once

#include <windows.h>

#include <functional>
#include <string>

#include "core/file_system.h"
#include "core/handle.h"

// The one place where the system is asked about disks. Every call can wait for the disk as long as
// the system lets it. All may be made on any thread; paths are in the system's form (systemPath).

namespace tunovka {

// What the system is asked for, as a stand-in tells calls apart.
enum class DiskCall {
    Attributes,  // of a path, its times and size, its identity
    List,        // a folder's entries
    Open,
    Create,
    Read,
    Write,
    Flush,
    SetTimes,
    SetAttributes,
    Copy,  // a file, and each further piece of it
    Move,
    Replace,
    Delete,
    Drive,     // its type, label, readiness, share
    Shell,     // has sub-folders, opens with
    TryAgain,  // after a refusal, before the pause; an error ends the trying
};

// Stands between the program and the system in tests and benchmarks.
class DiskStandIn {
  public:
    virtual ~DiskStandIn() = default;
    // Comes right before each call, on its thread, and may take its time. Other than 0 is the error
    // of a call that is not made. `bytes` is what a read or write is to move, or less.
    virtual DWORD asked(DiskCall call, const std::wstring& path, DWORD& bytes) = 0;
    // Copies in place of the system when it returns true.
    virtual bool copies(const std::wstring& /*from*/, const std::wstring& /*to*/,
                        const CopyProgress& /*progress*/, DWORD& /*error*/) {
        return false;
    }
};

// Puts a stand-in in, or takes it away (nullptr). It lives until no call is under way any more.
void setDiskStandIn(DiskStandIn* standIn);

// Each returns the system's error, ERROR_SUCCESS (0) when there is none.
namespace Disk {

DWORD details(const std::wstring& path, WIN32_FILE_ATTRIBUTE_DATA& details);
// What its folder tells of one file or folder, also when it is locked.
DWORD entry(const std::wstring& path, WIN32_FIND_DATAW& entry);
DWORD setAttributes(const std::wstring& path, DWORD attributes);

// The one walk through a folder: all entries that match but "." and "..", with their short names,
// until `take` returns false; "." comes in `own`, but not of a drive's root. That of an empty drive
// is ERROR_FILE_NOT_FOUND.
DWORD list(const std::wstring& folder, const std::function<bool(const WIN32_FIND_DATAW&)>& take,
           const wchar_t* match = L"*", WIN32_FIND_DATAW* own = nullptr);

// A copy with everything that belongs to the file, to a path where nothing is. Stopped by the
// progress, it is ERROR_REQUEST_ABORTED. What is half made stays.
DWORD copy(const std::wstring& from, const std::wstring& to, const CopyProgress& progress);
DWORD move(const std::wstring& from, const std::wstring& to, DWORD flags);
// Puts a file into the place of another, which keeps its rights and streams.
DWORD replace(const std::wstring& target, const std::wstring& replacement);
DWORD remove(const std::wstring& path);

// Roots as "E:\", drives as "E:".
UINT driveType(const std::wstring& root);
DWORD label(const std::wstring& root, std::wstring& label);
DWORD share(const std::wstring& drive, std::wstring& share);

bool hasSubfolders(const std::wstring& folder);            // the shell's own answer
std::wstring associatedProgram(const std::wstring& path);  // "" when there is none

// Makes an attempt until it is no longer refused as denied or in use, for a second at most: virus
// scanners hold on to what was just written. Returns its last error.
DWORD persistently(const std::wstring& path, const std::function<DWORD()>& attempt);

}  // namespace Disk

// An open file.
class DiskFile {
  public:
    struct Access {
        DWORD rights = 0;
        DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
        DWORD disposition = OPEN_EXISTING;
        DWORD flags = 0;
    };
    DWORD open(const std::wstring& path, const Access& access);
    void close() { handle_.reset(); }

    // `count` is what is wanted and then what was moved.
    DWORD read(char* bytes, DWORD& count) const;
    DWORD write(const char* bytes, DWORD& count) const;
    DWORD flush() const;
    DWORD information(BY_HANDLE_FILE_INFORMATION& information) const;
    DWORD seek(std::uint64_t place) const;
    // nullptr leaves a time as it is.
    DWORD setTimes(const FILETIME* created, const FILETIME* modified) const;
    HANDLE handle() const { return handle_.get(); }

  private:
    std::wstring path_;
    FileHandle handle_;
};

}  // namespace tunovka
