#include <windows.h>

#include <algorithm>
#include <optional>

#include "core/disk_steps_windows.h"
#include "core/errors.h"
#include "core/file_system.h"
#include "core/handle.h"
#include "core/paths.h"
#include "core/system_windows.h"

// How a file gets its content so that a failure at any step leaves a whole copy: the new content
// is finished in a file of its own beside the target, and only then takes the target's place.

namespace tunovka {
namespace {

constexpr wchar_t kSource[] = L"FileSystemObject";
constexpr DWORD kPiece = 256 * 1024;  // bytes between two looks at the progress
constexpr DWORD kKeptAttributes = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN |
                                  FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE |
                                  FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;

bool isFolder(DWORD attributes) {
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
}

// A file that is being made beside its target. It goes away with this object unless it was put
// into the target's place.
class Unfinished {
  public:
    explicit Unfinished(const std::wstring& target) : target_(target) {
        diskStep(DiskStep::Create, target);
        do {
            path_ = unfinishedName(target);
            file_.reset(CreateFileW(path_.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                    FILE_ATTRIBUTE_NORMAL, nullptr));
        } while (!file_ && GetLastError() == ERROR_FILE_EXISTS);
        if (!file_) raiseSystemError(kSource);
    }
    Unfinished(const Unfinished&) = delete;
    Unfinished& operator=(const Unfinished&) = delete;
    ~Unfinished() {
        file_.reset();
        if (path_.empty()) return;
        SetFileAttributesW(path_.c_str(), FILE_ATTRIBUTE_NORMAL);
        DeleteFileW(path_.c_str());
    }

    void write(const char* bytes, DWORD count) {
        DWORD written = 0;
        if (!WriteFile(file_.get(), bytes, count, &written, nullptr)) raiseSystemError(kSource);
        if (written < count) raiseSystemError(kSource, ERROR_DISK_FULL);
    }

    // Times may be nullptr: those of now.
    void finish(DWORD attributes, const FILETIME* created, const FILETIME* modified) {
        diskStep(DiskStep::Flush, target_);
        if (!FlushFileBuffers(file_.get())) raiseSystemError(kSource);
        SetFileTime(file_.get(), created, nullptr, modified);  // not every volume keeps them
        file_.reset();
        diskStep(DiskStep::SetAttributes, target_);
        if ((attributes & kKeptAttributes) &&
            !SetFileAttributesW(path_.c_str(), attributes & kKeptAttributes))
            raiseSystemError(kSource);
    }

    void takePlace(bool mayReplace) {
        diskStep(DiskStep::Replace, target_);
        const DWORD flags = MOVEFILE_WRITE_THROUGH | (mayReplace ? MOVEFILE_REPLACE_EXISTING : 0);
        if (!MoveFileExW(path_.c_str(), target_.c_str(), flags)) raiseSystemError(kSource);
        path_.clear();
    }

  private:
    std::wstring target_;
    std::wstring path_;  // "" when the file is in its place
    FileHandle file_;
};

// The destination of a copy or move as the system takes it; a path that ends in "\" names the
// folder.
std::wstring destinationFor(const std::wstring& source, const std::wstring& destination) {
    const bool folder =
        !destination.empty() && (destination.back() == L'\\' || destination.back() == L'/');
    return systemPath(folder ? destination + fileName(source) : destination);
}

// What is there already must be a file that can be replaced.
void requireReplaceable(const std::wstring& source, const std::wstring& destination) {
    const DWORD attributes = attributesOf(destination);
    if (attributes == INVALID_FILE_ATTRIBUTES) return;
    if (isFolder(attributes) || (attributes & FILE_ATTRIBUTE_READONLY) ||
        FileSystemObject::sameFile(source, destination))
        raiseSystemError(kSource, ERROR_ACCESS_DENIED);
}

// Raises what deleting the file would raise, without deleting it.
void requireDeletable(const std::wstring& file) {
    const FileHandle probe(
        CreateFileW(file.c_str(), DELETE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                    nullptr, OPEN_EXISTING, FILE_FLAG_OPEN_REPARSE_POINT, nullptr));
    if (!probe) raiseSystemError(kSource);
}

// Copies the content, piece by piece; false when the progress stopped it.
bool copyContent(const FileHandle& from, std::uint64_t total, const std::wstring& source,
                 Unfinished& to, const CopyProgress& progress) {
    std::string piece(kPiece, '\0');
    std::uint64_t done = 0;
    while (done < total) {
        diskStep(DiskStep::Copy, source);
        DWORD read = 0;
        if (!ReadFile(from.get(), piece.data(), kPiece, &read, nullptr)) raiseSystemError(kSource);
        if (read == 0) throw RuntimeError(kPathFileAccess, {}, kSource);  // it was cut meanwhile
        to.write(piece.data(), read);
        done += read;
        if (progress && !progress(done, total)) return false;
    }
    return true;
}

bool copyBeside(const std::wstring& source, const std::wstring& destination, bool mayReplace,
                const CopyProgress& progress) {
    const FileHandle from(CreateFileW(source.c_str(), GENERIC_READ,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                      nullptr, OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
    BY_HANDLE_FILE_INFORMATION information;
    if (!from || !GetFileInformationByHandle(from.get(), &information)) raiseSystemError(kSource);
    const std::uint64_t total =
        std::uint64_t{information.nFileSizeHigh} << 32 | information.nFileSizeLow;

    Unfinished copy(destination);
    if (!copyContent(from, total, source, copy, progress)) return false;
    copy.finish(information.dwFileAttributes, nullptr, &information.ftLastWriteTime);
    copy.takePlace(mayReplace);
    return true;
}

// A file that is about to be written whole, as it stands.
struct OldFile {
    DWORD attributes = 0;
    std::optional<FILETIME> created;
};

// Raises what writing into the file itself would raise: read-only, locked, without rights. Putting
// another file into its place would not always notice.
OldFile requireWritable(const std::wstring& target) {
    OldFile old;
    old.attributes = attributesOf(target);
    if (old.attributes == INVALID_FILE_ATTRIBUTES) return {};
    const FileHandle file(CreateFileW(target.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                      OPEN_EXISTING, 0, nullptr));
    if (!file || (old.attributes & (FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY)))
        raiseSystemError(kSource, file ? ERROR_ACCESS_DENIED : GetLastError());
    FILETIME created;
    if (GetFileTime(file.get(), &created, nullptr, nullptr)) old.created = created;
    return old;
}

void replaceContent(const std::wstring& target, std::string_view content) {
    const OldFile old = requireWritable(target);
    Unfinished file(target);
    for (std::size_t at = 0; at < content.size(); at += kPiece) {
        diskStep(DiskStep::Write, target);
        const std::size_t count = std::min<std::size_t>(kPiece, content.size() - at);
        file.write(content.data() + at, static_cast<DWORD>(count));
    }
    file.finish(old.attributes, old.created ? &*old.created : nullptr, nullptr);
    file.takePlace(true);
}

}  // namespace

namespace FileSystemObject {

void writeWhole(const std::wstring& path, std::string_view content) {
    try {
        replaceContent(systemPath(linkTarget(systemPath(path))), content);
    } catch (const RuntimeError& failure) {
        throw RuntimeError(failure.number, path, failure.source);  // a notice is to name the file
    }
}

bool copyFile(const std::wstring& source, const std::wstring& destination,
              const CopyProgress& progress) {
    const std::wstring from = requireFile(source);
    const std::wstring to = linkTarget(destinationFor(source, destination));
    requireReplaceable(from, to);
    return copyBeside(from, to, true, progress);
}

bool moveFile(const std::wstring& source, const std::wstring& destination, bool replace,
              const CopyProgress& progress) {
    const std::wstring from = requireFile(source);
    const std::wstring to = destinationFor(source, destination);
    if (!replace && attributesOf(to) != INVALID_FILE_ATTRIBUTES)
        raiseSystemError(kSource, ERROR_FILE_EXISTS);
    requireReplaceable(from, to);

    diskStep(DiskStep::Move, from);
    const DWORD flags = MOVEFILE_WRITE_THROUGH | (replace ? MOVEFILE_REPLACE_EXISTING : 0);
    if (MoveFileExW(from.c_str(), to.c_str(), flags)) return true;
    if (GetLastError() != ERROR_NOT_SAME_DEVICE) raiseSystemError(kSource);

    requireDeletable(from);  // before the destination's old file is gone
    if (!copyBeside(from, to, replace, progress)) return false;
    deleteFile(from, true);
    return true;
}

void deleteFile(const std::wstring& path, bool force) {
    const std::wstring file = requireFile(path);
    const DWORD attributes = attributesOf(file);
    const bool readOnly = attributes & FILE_ATTRIBUTE_READONLY;
    if (readOnly && !force) raiseSystemError(kSource, ERROR_ACCESS_DENIED);
    if (readOnly) setAttributes(file, attributes & ~FILE_ATTRIBUTE_READONLY);
    try {
        diskStep(DiskStep::Delete, file);
        if (!DeleteFileW(file.c_str())) raiseSystemError(kSource);
    } catch (...) {
        if (readOnly) SetFileAttributesW(file.c_str(), attributes);
        throw;
    }
}

}  // namespace FileSystemObject
}  // namespace tunovka
