#include <windows.h>

#include <algorithm>
#include <atomic>
#include <optional>
#include <vector>

#include "core/disk_windows.h"
#include "core/errors.h"
#include "core/file_system.h"
#include "core/non_copyable.h"
#include "core/paths.h"
#include "core/system_windows.h"

// How a file gets its content so that a failure at any step leaves a whole copy: the new content
// is finished in a file of its own beside the target, and only then takes the target's place.

namespace tunovka {
namespace {

constexpr DWORD kPiece = 256 * 1024;  // bytes of one write
constexpr DWORD kKeptAttributes = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN |
                                  FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE |
                                  FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;

bool isThere(const std::wstring& path) {
    const DWORD error = attributesOf(path).error;
    return error != ERROR_FILE_NOT_FOUND && error != ERROR_PATH_NOT_FOUND;
}

// What deleting the file would answer.
DWORD deletable(const std::wstring& file) {
    DiskFile probe;
    return probe.open(file, {.rights = DELETE, .flags = FILE_FLAG_OPEN_REPARSE_POINT});
}

// --- files that are being made

constexpr wchar_t kUnfinished[] = L"~tunovka-%08x-%04x.tmp";
constexpr wchar_t kUnfinishedMatch[] = L"~tunovka-*.tmp";
constexpr std::size_t kUnfinishedLength = 26;
constexpr std::uint64_t kDay = 24ull * 60 * 60 * 10'000'000;  // in units of 100 ns

// Takes a file away that nobody has open.
void removeUnused(const std::wstring& path) {
    if (DiskFile file; file.open(path, {.rights = DELETE, .share = 0})) return;
    Disk::remove(path);
}

// What the program left behind when it was ended in the middle of its work.
void removeLeftovers(const std::wstring& folder) {
    const std::uint64_t now = ticksNow();
    std::vector<std::wstring> old;
    const auto take = [&](const WIN32_FIND_DATAW& entry) {
        // A copy has its source's time of change, but was created when it was made.
        const auto made = std::max(ticks(entry.ftCreationTime), ticks(entry.ftLastWriteTime));
        if (made + kDay < now && wcslen(entry.cFileName) == kUnfinishedLength)
            old.push_back(folder + entry.cFileName);
        return true;
    };
    Disk::list(folder, take, kUnfinishedMatch);
    for (const std::wstring& path : old) removeUnused(path);
}

// A file that is being made beside its target. It goes with this object unless it took the place.
class Unfinished : NonCopyable {
  public:
    explicit Unfinished(const std::wstring& target) : target_(target) {
        const std::wstring full = systemPath(target);
        folder_ = full.substr(0, full.find_last_of(L'\\') + 1);
        removeLeftovers(folder_);
    }
    ~Unfinished() {
        if (path_.empty()) return;
        Disk::setAttributes(path_, FILE_ATTRIBUTE_NORMAL);
        Disk::remove(path_);
    }

    // `created` is the time that it is to have, nullptr for now.
    void write(std::string_view content, const FILETIME* created) {
        DiskFile file;
        require(make([&] {
            return file.open(path_,
                             {.rights = GENERIC_WRITE, .share = 0, .disposition = CREATE_NEW});
        }));
        while (!content.empty()) {
            const DWORD wanted = static_cast<DWORD>(std::min<std::size_t>(kPiece, content.size()));
            DWORD written = wanted;
            require(file.write(content.data(), written));
            if (written < wanted) raiseSystemError(ERROR_DISK_FULL);
            content.remove_prefix(written);
        }
        require(file.flush());
        if (created) file.setTimes(created, nullptr);  // not every volume keeps it
    }

    // False when the progress stopped it.
    bool copy(const std::wstring& source, const CopyProgress& progress) {
        WIN32_FILE_ATTRIBUTE_DATA from, copied;
        require(Disk::details(linkTarget(source), from));
        const std::uint64_t total = joined(from.nFileSizeHigh, from.nFileSizeLow);
        if (progress && !progress(0, total)) return false;
        const DWORD error = make([&] { return Disk::copy(source, path_, progress); });
        if (error == ERROR_REQUEST_ABORTED) return false;
        require(error);
        require(Disk::details(path_, copied));
        if (joined(copied.nFileSizeHigh, copied.nFileSizeLow) < total)
            raiseSystemError(ERROR_HANDLE_EOF);  // the source was cut meanwhile
        // Not every system tells anything meanwhile.
        if (progress && !progress(total, total)) return false;
        flushCopy(copied.dwFileAttributes);
        keepAttributes(from.dwFileAttributes);
        return true;
    }

    void keepAttributes(DWORD attributes) {
        if (attributes & kKeptAttributes)
            require(Disk::setAttributes(path_, attributes & kKeptAttributes));
    }

    void takePlace(bool mayReplace, const TransferHooks& hooks) {
        const bool replaces = mayReplace && isThere(target_);
        if (replaces && hooks.closeFile) hooks.closeFile(target_);
        const DWORD error = Disk::persistently(target_, [&] { return place(mayReplace); });
        // An interrupted replacing may have cost the target: then this is the only copy.
        if (error && replaces && !isThere(target_)) path_.clear();
        require(error);
        path_.clear();
    }

  private:
    // Makes the file under a name that is free.
    template <class Attempt>
    DWORD make(Attempt attempt) {
        static std::atomic<unsigned> counter = 0;
        DWORD error = ERROR_FILE_EXISTS;
        while (error == ERROR_FILE_EXISTS) {
            wchar_t name[40];
            wsprintfW(name, kUnfinished, GetCurrentProcessId() ^ GetTickCount(),
                      ++counter & 0xFFFF);
            path_ = systemPath(folder_ + name);
            error = attempt();
        }
        return error;
    }

    void flushCopy(DWORD attributes) {
        if (attributes & FILE_ATTRIBUTE_READONLY)
            require(Disk::setAttributes(path_, FILE_ATTRIBUTE_NORMAL));
        DiskFile file;
        require(
            Disk::persistently(path_, [&] { return file.open(path_, {.rights = GENERIC_WRITE}); }));
        require(file.flush());
    }

    DWORD place(bool mayReplace) const {
        if (mayReplace && isThere(target_)) {
            // Some systems leave something behind when they replace a file that is in use.
            if (deletable(target_) == ERROR_SHARING_VIOLATION) return ERROR_SHARING_VIOLATION;
            if (!Disk::replace(target_, path_)) return ERROR_SUCCESS;
        }
        const DWORD flags = MOVEFILE_WRITE_THROUGH | (mayReplace ? MOVEFILE_REPLACE_EXISTING : 0);
        return Disk::move(path_, target_, flags);
    }

    std::wstring target_;
    std::wstring folder_;
    std::wstring path_;  // "" before it is made and when it is in its place
};

// --- what may stand against an operation

// The destination of a copy or move, which may be a folder ending in "\".
std::wstring destinationFor(const std::wstring& source, const std::wstring& destination) {
    const bool folder = destination.ends_with(L'\\') || destination.ends_with(L'/');
    return systemPath(folder ? destination + fileName(source) : destination);
}

// What is there already must be a file that can be replaced.
void requireReplaceable(const std::wstring& source, const std::wstring& destination) {
    const auto [attributes, error] = attributesOf(destination);
    if (!error && ((attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY)) ||
                   FileSystemObject::sameFile(source, destination)))
        raiseSystemError(ERROR_ACCESS_DENIED);
}

// Makes an attempt on files, and again once the program has closed those that are in use. It closes
// them as well when the attempt has worked; a refusal for another reason disturbs nobody.
DWORD freeing(const std::vector<std::wstring>& files, const TransferHooks& hooks,
              const std::function<DWORD()>& attempt) {
    const DWORD error = attempt();
    const bool mayBeUse = error == ERROR_ACCESS_DENIED || error == ERROR_SHARING_VIOLATION;
    const auto inUse = [](const std::wstring& file) {
        return deletable(file) == ERROR_SHARING_VIOLATION;
    };
    if (error && !(mayBeUse && std::ranges::any_of(files, inUse))) return error;
    if (hooks.closeFile) std::ranges::for_each(files, hooks.closeFile);
    return error ? Disk::persistently(files.front(), attempt) : error;
}

// The file that is about to be written whole, nullopt where none is. Raises what writing into it
// would raise, which putting another file into its place would not always notice.
std::optional<BY_HANDLE_FILE_INFORMATION> requireWritable(const std::wstring& target) {
    if (attributesOf(target).error) return std::nullopt;
    DiskFile file;
    BY_HANDLE_FILE_INFORMATION information;
    require(file.open(target, {.rights = GENERIC_WRITE, .share = FILE_SHARE_READ}));
    require(file.information(information));
    if (information.dwFileAttributes & (FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY))
        raiseSystemError(ERROR_ACCESS_DENIED);
    return information;
}

}  // namespace

namespace FileSystemObject {

void writeWhole(const std::wstring& path, std::string_view content) {
    try {
        const std::wstring target = systemPath(linkTarget(systemPath(path)));
        const auto old = requireWritable(target);
        Unfinished file(target);
        file.write(content, old ? &old->ftCreationTime : nullptr);
        file.keepAttributes(old ? old->dwFileAttributes : 0);
        file.takePlace(true, {});
    } catch (RuntimeError& failure) {
        failure.description += L": " + path;  // a notice is to name the file
        throw;
    }
}

bool copyFile(const std::wstring& source, const std::wstring& destination,
              const TransferHooks& hooks) {
    const std::wstring from = requireFile(source);
    const std::wstring to = linkTarget(destinationFor(source, destination));
    requireReplaceable(from, to);
    Unfinished copy(to);
    if (!copy.copy(from, hooks.progress)) return false;
    copy.takePlace(true, hooks);
    return true;
}

bool moveFile(const std::wstring& source, const std::wstring& destination, bool replace,
              const TransferHooks& hooks) {
    const std::wstring from = requireFile(source);
    const std::wstring to = destinationFor(source, destination);
    const bool replaces = !attributesOf(to).error;
    if (!replace && replaces) raiseSystemError(ERROR_FILE_EXISTS);
    requireReplaceable(from, to);

    std::vector<std::wstring> files{from};
    if (replaces) files.push_back(to);
    const DWORD flags = MOVEFILE_WRITE_THROUGH | (replace ? MOVEFILE_REPLACE_EXISTING : 0);
    const DWORD error = freeing(files, hooks, [&] { return Disk::move(from, to, flags); });
    if (error != ERROR_NOT_SAME_DEVICE) {
        require(error);
        return true;
    }
    if (const DWORD refusal = deletable(from); refusal != ERROR_SHARING_VIOLATION) require(refusal);
    WIN32_FILE_ATTRIBUTE_DATA before;
    require(Disk::details(from, before));
    Unfinished copy(to);
    if (!copy.copy(from, hooks.progress)) return false;
    // Before the destination's old file is gone.
    require(freeing({from}, hooks, [&] { return deletable(from); }));
    copy.takePlace(replace, hooks);
    // The place of an old file comes with that file's time; not every volume keeps one.
    if (DiskFile moved; !moved.open(to, {.rights = FILE_WRITE_ATTRIBUTES}))
        moved.setTimes(&before.ftCreationTime, nullptr);
    try {
        deleteFile(from, true);
    } catch (const RuntimeError& failure) {
        throw SourceLeft(failure);
    }
    return true;
}

void deleteFile(const std::wstring& path, bool force, const TransferHooks& hooks) {
    const std::wstring file = requireFile(path);
    const DWORD attributes = attributesOf(file).attributes;
    const bool readOnly = attributes & FILE_ATTRIBUTE_READONLY;
    if (readOnly && !force) raiseSystemError(ERROR_ACCESS_DENIED);
    if (readOnly) require(Disk::setAttributes(file, attributes & ~FILE_ATTRIBUTE_READONLY));
    const DWORD error = freeing({file}, hooks, [&] { return Disk::remove(file); });
    if (error && readOnly) Disk::setAttributes(file, attributes);
    require(error);
}

}  // namespace FileSystemObject
}  // namespace tunovka
