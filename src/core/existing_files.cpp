#include "core/existing_files.h"

#include <algorithm>

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

std::reference_wrapper<ExistingFiles> ExistingFiles::anew() {
    std::erase_if(folders_, [&](const auto& each) { return each.second.operation != operation_; });
    ++operation_;
    roots_.clear();
    last_ = nullptr;
    return *this;
}

bool ExistingFiles::contains(const std::wstring& path) {
    if (canNameNoFile(path)) return false;
    const std::wstring full = isNormal(path) ? path : disk_.normalized(path);
    const std::size_t cut = full.rfind(L'\\');
    if (cut == std::wstring::npos) return false;

    const Folder& folder = folderOf(full, cut);
    if (!folder.answers) return false;
    const std::wstring name = upperCased(std::wstring_view(full).substr(cut + 1));
    if (folder.names.contains(name)) return true;
    return folder.complete ? false : disk_.exists(full);
}

const ExistingFiles::Folder& ExistingFiles::folderOf(const std::wstring& path, std::size_t cut) {
    // Entries mostly follow folder by folder.
    if (last_ && path.compare(0, cut, lastFolder_) == 0) return *last_;
    const std::wstring folder = parentFolder(path);
    Folder& known = folders_[upperCased(folder)];
    if (known.operation != operation_) update(known, folder);
    lastFolder_.assign(path, 0, cut);
    last_ = &known;
    return known;
}

void ExistingFiles::update(Folder& folder, const std::wstring& path) {
    folder.operation = operation_;
    folder.answers = !path.empty() && rootAnswers(driveName(path));
    if (!folder.answers) return;
    // Taken before the listing: what happens during it shows the next time.
    const auto stamp = disk_.stamp(path);
    const bool unchanged = folder.complete && stamp && folder.stamp == stamp;
    if (unchanged) return;
    folder.stamp = stamp;
    fill(folder, path);
}

void ExistingFiles::fill(Folder& folder, const std::wstring& path) {
    folder.complete = false;
    folder.names.clear();
    const auto listing = disk_.list(path);
    if (!listing) return;
    folder.complete = listing->complete;
    // One text for all names: a folder of thousands costs one allocation and one mapping.
    folder.text = upperCased(listing->files);
    folder.names.reserve(std::ranges::count(folder.text, L'\\'));
    std::wstring_view rest = folder.text;
    for (std::size_t end; (end = rest.find(L'\\')) != rest.npos; rest.remove_prefix(end + 1))
        folder.names.insert(rest.substr(0, end));
}

bool ExistingFiles::rootAnswers(const std::wstring& root) {
    const auto [known, isNew] = roots_.try_emplace(root);
    if (isNew) known->second = disk_.rootAnswers(root);
    return known->second;
}

}  // namespace tunovka
