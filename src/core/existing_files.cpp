#include "core/existing_files.h"

#include "core/paths.h"
#include "core/text.h"

namespace tunovka {
namespace {

// Characters that no file name holds. A NUL would cut the question short at the system's border,
// the others are wildcards there.
bool canNameNoFile(std::wstring_view path) {
    return path.empty() ||
           path.find_first_of(std::wstring_view(L"*?<>\"|\0", 7)) != std::wstring_view::npos;
}

// True for "X:\a\b.mp3" without any part that the file system would rewrite.
bool isNormal(std::wstring_view path) {
    if (path.size() < 4 || path[1] != L':' || path[2] != L'\\') return false;
    wchar_t before = L'\\';
    for (const wchar_t letter : path.substr(3)) {
        if (letter == L'/' || letter == L':') return false;
        // An empty part, or one that ends in a dot or a blank ("." and ".." among them).
        if (letter == L'\\' && (before == L'\\' || before == L'.' || before == L' ')) return false;
        before = letter;
    }
    return before != L'\\' && before != L'.' && before != L' ';
}

}  // namespace

ExistingFiles::ExistingFiles(Disk disk) : disk_(std::move(disk)) {}

bool ExistingFiles::contains(const std::wstring& path) {
    if (canNameNoFile(path)) return false;
    const std::wstring full = isNormal(path) ? path : disk_.normalized(path);
    const std::wstring folder = parentFolder(full);
    if (folder.empty()) return false;
    if (!rootAnswers(full)) return false;

    const Folder& known = folderOf(folder);
    const std::size_t cut = full.find_last_of(L"\\/") + 1;
    if (known.listed && known.names.contains(upperCased(std::wstring_view(full).substr(cut))))
        return true;
    return known.listed && known.complete ? false : disk_.exists(full);
}

bool ExistingFiles::rootAnswers(const std::wstring& path) {
    const std::wstring root = driveName(path);
    const auto [known, isNew] = roots_.try_emplace(root);
    if (isNew) known->second = disk_.rootAnswers(root);
    return known->second;
}

ExistingFiles::Folder& ExistingFiles::folderOf(const std::wstring& folder) {
    if (last_ && folder == lastFolder_) return *last_;  // entries mostly follow folder by folder
    const auto [known, isNew] = folders_.try_emplace(upperCased(folder));
    if (isNew) {
        if (const auto listing = disk_.list(folder)) {
            known->second.listed = true;
            known->second.complete = listing->complete;
            for (const std::wstring& name : listing->files)
                known->second.names.insert(upperCased(name));
        }
    }
    lastFolder_ = folder;
    last_ = &known->second;
    return *last_;
}

}  // namespace tunovka
