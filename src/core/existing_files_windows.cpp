#include <windows.h>

#include "core/errors.h"
#include "core/existing_files.h"
#include "core/file_system.h"
#include "core/handle.h"
#include "core/paths.h"
#include "core/system_windows.h"

namespace tunovka {
namespace {

// Errors that say for certain that there is no such folder.
bool saysMissing(DWORD error) {
    return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND ||
           error == ERROR_DIRECTORY || error == ERROR_INVALID_NAME;
}

std::optional<ExistingFiles::Disk::Listing> list(const std::wstring& folder) {
    ExistingFiles::Disk::Listing listing;
    listing.complete = true;
    const std::wstring usable = systemPathOrNone(folder);
    if (usable.empty()) return listing;  // a device, a name that no folder can have
    WIN32_FIND_DATAW entry;
    // The standard form of the question, because the basic one leaves the short names out.
    const FindHandle search(FindFirstFileExW((withBackslash(usable) + L"*").c_str(),
                                             FindExInfoStandard, &entry, FindExSearchNameMatch,
                                             nullptr, 0));
    if (!search && saysMissing(GetLastError())) return listing;
    if (!search) return std::nullopt;
    do {
        if (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) continue;
        listing.files.append(entry.cFileName).append(1, L'\\');
        if (entry.cAlternateFileName[0])
            listing.files.append(entry.cAlternateFileName).append(1, L'\\');
    } while (FindNextFileW(search.get(), &entry));
    listing.complete = GetLastError() == ERROR_NO_MORE_FILES;
    return listing;
}

// A file that may not even be looked at counts as there: nobody could say that it is missing.
bool exists(const std::wstring& path) {
    const DWORD attributes = attributesOf(path);
    if (attributes == INVALID_FILE_ATTRIBUTES) return GetLastError() == ERROR_ACCESS_DENIED;
    return !(attributes & FILE_ATTRIBUTE_DIRECTORY) && path.back() != L'\\';
}

// A root that answers but refuses to be looked at may well have folders that do not.
bool answers(const std::wstring& root) {
    if (attributesOf(withBackslash(root)) != INVALID_FILE_ATTRIBUTES) return true;
    return errorNumberOf(GetLastError()) == kPermissionDenied;
}

}  // namespace

ExistingFiles::ExistingFiles() : ExistingFiles(Disk{list, exists, fullPath, answers}) {}

}  // namespace tunovka
