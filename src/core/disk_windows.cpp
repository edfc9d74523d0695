#include "core/disk_windows.h"

#include <shellapi.h>
#include <shlobj.h>

#include <atomic>
#include <exception>

#include "core/late_function.h"
#include "core/paths.h"

namespace tunovka {
namespace {

constexpr std::uint64_t kFlushEvery = 8u << 20;  // bytes
constexpr DWORD kAllowDecrypted = 8;             // COPY_FILE_ALLOW_DECRYPTED_DESTINATION

std::atomic<DiskStandIn*> standIn = nullptr;

DWORD asked(DiskCall call, const std::wstring& path, DWORD& bytes) {
    DiskStandIn* const other = standIn;
    return other ? other->asked(call, path, bytes) : ERROR_SUCCESS;
}

DWORD asked(DiskCall call, const std::wstring& path) {
    DWORD none = 0;
    return asked(call, path, none);
}

// Makes the call unless a stand-in answers; a call that returns false has failed.
template <class Call>
DWORD answerOf(DiskCall kind, const std::wstring& path, Call&& call) {
    if (const DWORD error = asked(kind, path)) return error;
    return call() ? ERROR_SUCCESS : GetLastError();
}

// A copy under way, as its callback knows it.
struct Copying {
    const std::wstring& path;
    const CopyProgress& progress;
    std::uint64_t flushed = 0;
    DWORD error = ERROR_SUCCESS;
    std::exception_ptr thrown{};

    // False when the copy is to end.
    bool goesOn(std::uint64_t done, std::uint64_t total, HANDLE file) {
        error = asked(DiskCall::Copy, path);
        if (!error && done - flushed >= kFlushEvery) error = flush(done, file);
        if (!error && progress && !progress(done, total)) error = ERROR_REQUEST_ABORTED;
        return !error;
    }

    // In between, so that not all of it has to be waited for at the end.
    DWORD flush(std::uint64_t done, HANDLE file) {
        flushed = done;
        const DWORD failure =
            answerOf(DiskCall::Flush, path, [&] { return FlushFileBuffers(file); });
        // The handle is the system's own, which need not let us.
        return failure == ERROR_ACCESS_DENIED || failure == ERROR_INVALID_HANDLE ? 0 : failure;
    }
};

DWORD CALLBACK onCopied(LARGE_INTEGER total, LARGE_INTEGER done, LARGE_INTEGER, LARGE_INTEGER,
                        DWORD, DWORD, HANDLE, HANDLE to, LPVOID data) {
    Copying& copying = *static_cast<Copying*>(data);
    try {
        const auto bytes = [](LARGE_INTEGER size) {
            return static_cast<std::uint64_t>(size.QuadPart);
        };
        if (copying.goesOn(bytes(done), bytes(total), to)) return PROGRESS_CONTINUE;
    } catch (...) {
        copying.thrown = std::current_exception();
    }
    return PROGRESS_CANCEL;
}

}  // namespace

void setDiskStandIn(DiskStandIn* replacement) {
    standIn = replacement;
}

namespace Disk {

DWORD details(const std::wstring& path, WIN32_FILE_ATTRIBUTE_DATA& details) {
    return answerOf(DiskCall::Attributes, path, [&] {
        return GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &details);
    });
}

DWORD entry(const std::wstring& path, WIN32_FIND_DATAW& entry) {
    return answerOf(DiskCall::Attributes, path, [&] {
        return static_cast<bool>(FindHandle(FindFirstFileW(path.c_str(), &entry)));
    });
}

DWORD setAttributes(const std::wstring& path, DWORD attributes) {
    return answerOf(DiskCall::SetAttributes, path,
                    [&] { return SetFileAttributesW(path.c_str(), attributes); });
}

DWORD list(const std::wstring& folder, const std::function<bool(const WIN32_FIND_DATAW&)>& take,
           const wchar_t* match, WIN32_FIND_DATAW* own) {
    if (const DWORD error = asked(DiskCall::List, folder)) return error;
    WIN32_FIND_DATAW entry;
    const std::wstring pattern = withBackslash(folder) + match;
    // The standard form of the question, because the basic one leaves the short names out.
    const FindHandle search(FindFirstFileExW(pattern.c_str(), FindExInfoStandard, &entry,
                                             FindExSearchNameMatch, nullptr, 0));
    if (!search) return GetLastError();
    do {
        const wchar_t* const name = entry.cFileName;
        if (own && wcscmp(name, L".") == 0) *own = entry;
        if (wcscmp(name, L".") == 0 || wcscmp(name, L"..") == 0) continue;
        if (!take(entry)) return ERROR_SUCCESS;
    } while (FindNextFileW(search.get(), &entry));
    const DWORD error = GetLastError();
    return error == ERROR_NO_MORE_FILES ? ERROR_SUCCESS : error;
}

DWORD copy(const std::wstring& from, const std::wstring& to, const CopyProgress& progress) {
    if (const DWORD error = asked(DiskCall::Copy, to)) return error;
    DWORD error = ERROR_SUCCESS;
    DiskStandIn* const other = standIn;
    if (other && other->copies(from, to, progress, error)) return error;
    Copying copying{to, progress};
    if (!CopyFileExW(from.c_str(), to.c_str(), onCopied, &copying, nullptr,
                     COPY_FILE_FAIL_IF_EXISTS | kAllowDecrypted))
        error = GetLastError();
    if (copying.thrown) std::rethrow_exception(copying.thrown);
    return copying.error ? copying.error : error;
}

DWORD move(const std::wstring& from, const std::wstring& to, DWORD flags) {
    return answerOf(DiskCall::Move, to,
                    [&] { return MoveFileExW(from.c_str(), to.c_str(), flags); });
}

DWORD replace(const std::wstring& target, const std::wstring& replacement) {
    return answerOf(DiskCall::Replace, target, [&] {
        return ReplaceFileW(target.c_str(), replacement.c_str(), nullptr,
                            REPLACEFILE_IGNORE_MERGE_ERRORS, nullptr, nullptr);
    });
}

DWORD remove(const std::wstring& path) {
    return answerOf(DiskCall::Delete, path, [&] { return DeleteFileW(path.c_str()); });
}

UINT driveType(const std::wstring& root) {
    return asked(DiskCall::Drive, root) ? DRIVE_UNKNOWN : GetDriveTypeW(root.c_str());
}

DWORD label(const std::wstring& root, std::wstring& label) {
    wchar_t text[MAX_PATH + 1] = {};
    const DWORD error = answerOf(DiskCall::Drive, root, [&] {
        return GetVolumeInformationW(root.c_str(), text, MAX_PATH + 1, nullptr, nullptr, nullptr,
                                     nullptr, 0);
    });
    label = text;
    return error;
}

DWORD share(const std::wstring& drive, std::wstring& share) {
    static const LateFunction<decltype(WNetGetConnectionW)> connection(L"mpr.dll",
                                                                       "WNetGetConnectionW");
    if (const DWORD error = asked(DiskCall::Drive, drive)) return error;
    wchar_t text[MAX_PATH + 1] = {};
    DWORD length = MAX_PATH + 1;
    const DWORD error =
        connection ? connection(drive.c_str(), text, &length) : DWORD{ERROR_CALL_NOT_IMPLEMENTED};
    if (!error) share = text;
    return error;
}

bool hasSubfolders(const std::wstring& folder) {
    static const LateFunction<decltype(SHGetFileInfoW)> fileInfo(L"shell32.dll", "SHGetFileInfoW");
    if (asked(DiskCall::Shell, folder) || !fileInfo) return false;
    SHFILEINFOW information{};
    information.dwAttributes = SFGAO_HASSUBFOLDER;  // asked for nothing that costs more
    // A path that the shell does not know gives 0 and leaves attributes that mean nothing.
    return fileInfo(folder.c_str(), 0, &information, sizeof information,
                    SHGFI_ATTRIBUTES | SHGFI_ATTR_SPECIFIED) &&
           (information.dwAttributes & SFGAO_HASSUBFOLDER);
}

std::wstring associatedProgram(const std::wstring& path) {
    static const LateFunction<decltype(FindExecutableW)> find(L"shell32.dll", "FindExecutableW");
    if (asked(DiskCall::Shell, path) || !find) return {};
    wchar_t program[MAX_PATH + 1] = {};
    const auto result = reinterpret_cast<INT_PTR>(find(path.c_str(), nullptr, program));
    return result > 32 ? program : L"";
}

DWORD persistently(const std::wstring& path, const std::function<DWORD()>& attempt) {
    constexpr DWORD kPause = 50;  // ms
    for (int pauses = 1000 / kPause;; --pauses) {
        const DWORD error = attempt();
        const bool mayPass = error == ERROR_ACCESS_DENIED || error == ERROR_SHARING_VIOLATION;
        if (!mayPass || pauses == 0 || asked(DiskCall::TryAgain, path)) return error;
        Sleep(kPause);
    }
}

}  // namespace Disk

DWORD DiskFile::open(const std::wstring& path, const Access& access) {
    path_ = path;
    DiskCall call = DiskCall::Open;
    if (access.disposition != OPEN_EXISTING) call = DiskCall::Create;
    if (access.rights == 0) call = DiskCall::Attributes;
    return answerOf(call, path, [&] {
        handle_.reset(CreateFileW(path.c_str(), access.rights, access.share, nullptr,
                                  access.disposition, access.flags, nullptr));
        return static_cast<bool>(handle_);
    });
}

DWORD DiskFile::read(char* bytes, DWORD& count) const {
    if (const DWORD error = asked(DiskCall::Read, path_, count)) return error;
    return ReadFile(handle_.get(), bytes, count, &count, nullptr) ? ERROR_SUCCESS : GetLastError();
}

DWORD DiskFile::write(const char* bytes, DWORD& count) const {
    if (const DWORD error = asked(DiskCall::Write, path_, count)) return error;
    return WriteFile(handle_.get(), bytes, count, &count, nullptr) ? ERROR_SUCCESS : GetLastError();
}

DWORD DiskFile::flush() const {
    return answerOf(DiskCall::Flush, path_, [&] { return FlushFileBuffers(handle_.get()); });
}

DWORD DiskFile::information(BY_HANDLE_FILE_INFORMATION& information) const {
    return answerOf(DiskCall::Attributes, path_,
                    [&] { return GetFileInformationByHandle(handle_.get(), &information); });
}

DWORD DiskFile::seek(std::uint64_t place) const {
    LARGE_INTEGER to;
    to.QuadPart = static_cast<LONGLONG>(place);
    return SetFilePointerEx(handle_.get(), to, nullptr, FILE_BEGIN) ? ERROR_SUCCESS
                                                                    : GetLastError();
}

DWORD DiskFile::setTimes(const FILETIME* created, const FILETIME* modified) const {
    return answerOf(DiskCall::SetTimes, path_,
                    [&] { return SetFileTime(handle_.get(), created, nullptr, modified); });
}

}  // namespace tunovka
