#include "core/existing_files.h"

#include <algorithm>

#include "core/paths.h"
#include "core/text.h"

namespace tunovka {
namespace {

// Characters that no file name holds. A NUL would cut the question short at the system's border,
// the others are wildcards there.
bool canNameNoFile(wchar_t letter) {
    return letter == L'*' || letter == L'?' || letter == L'<' || letter == L'>' || letter == L'"' ||
           letter == L'|' || letter == L'\0';
}

enum class Spelling {
    Impossible,  // names no file
    Normal,      // "X:\a\b.mp3" without any part that the file system would rewrite
    Other,
};

Spelling spellingOf(std::wstring_view path) {
    if (path.empty()) return Spelling::Impossible;
    bool normal = path.size() > 3 && path[1] == L':' && path[2] == L'\\';
    wchar_t before = 0;
    for (std::size_t i = 0; i < path.size(); before = path[i++]) {
        const wchar_t letter = path[i];
        if (canNameNoFile(letter)) return Spelling::Impossible;
        if (letter == L'/' || (letter == L':' && i != 1)) normal = false;
        // An empty part, or one that ends in a dot or a blank ("." and ".." among them).
        const bool endsPart = before == L'\\' || before == L'.' || before == L' ';
        if (letter == L'\\' && endsPart) normal = false;
    }
    const bool endsWell = before != L'\\' && before != L'.' && before != L' ';
    return normal && endsWell ? Spelling::Normal : Spelling::Other;
}

}  // namespace

ExistingFiles::ExistingFiles(Disk disk) : disk_(std::move(disk)) {}

std::reference_wrapper<ExistingFiles> ExistingFiles::anew() {
    std::erase_if(folders_, [&](const auto& each) { return each.second.operation != operation_; });
    ++operation_;
    roots_.clear();
    spelled_.clear();
    return *this;
}

bool ExistingFiles::contains(const std::wstring& path) {
    const Spelling spelling = spellingOf(path);
    if (spelling == Spelling::Impossible) return false;
    if (spelling == Spelling::Other) return holds(disk_.normalized(path));
    return holds(path);
}

bool ExistingFiles::holds(const std::wstring& full) {
    const std::size_t cut = full.rfind(L'\\');
    if (cut == std::wstring::npos || cut + 1 == full.size()) return false;  // a folder's name

    const Folder& folder = folderOf(full, cut);
    if (!folder.answers) return false;
    const std::wstring name = upperCased(std::wstring_view(full).substr(cut + 1));
    if (folder.names.contains(name)) return true;
    return folder.complete ? false : disk_.exists(full);
}

const ExistingFiles::Folder& ExistingFiles::folderOf(const std::wstring& path, std::size_t cut) {
    const std::wstring_view spelling = std::wstring_view(path).substr(0, cut);
    if (const auto known = spelled_.find(spelling); known != spelled_.end()) return *known->second;
    const std::wstring folder = parentFolder(path);
    Folder& known = folders_[upperCased(folder)];
    if (known.operation != operation_) update(known, folder);
    spelled_.emplace(spelling, &known);
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
