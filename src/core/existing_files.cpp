#include "core/existing_files.h"

#include <algorithm>
#include <utility>

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

// A folder whose name ends in a dot or a blank: asked for alone, the system would take it for
// another one.
bool hasOddPart(std::wstring_view full) {
    return full.find(L" \\") != full.npos || full.find(L".\\") != full.npos;
}

}  // namespace

ExistingFiles::ExistingFiles(Disk disk) : disk_(std::move(disk)) {}

std::reference_wrapper<ExistingFiles> ExistingFiles::anew() {
    std::erase_if(folders_, [&](const auto& each) { return each.second.operation != operation_; });
    ++operation_;
    roots_.clear();
    spelled_.clear();
    expected_.clear();
    expectedNames_.clear();
    return *this;
}

bool ExistingFiles::contains(const std::wstring& path) {
    const Spelling spelling = spellingOf(path);
    if (spelling == Spelling::Impossible) return false;
    if (spelling == Spelling::Normal) return holds(path);
    const std::wstring full = disk_.normalized(path);
    return hasOddPart(full) ? isThere(full) : holds(full);
}

bool ExistingFiles::isThere(const std::wstring& full) {
    const auto answer =
        disk_.ask(full, [full, exists = disk_.exists] { return Disk::Answer{exists(full)}; });
    return !answer || answer->there;
}

bool ExistingFiles::holds(const std::wstring& full) {
    const std::size_t cut = full.rfind(L'\\');
    if (cut == std::wstring::npos || cut + 1 == full.size()) return false;  // a folder's name

    const Folder& folder = folderOf(full, cut);
    if (!folder.answers) return false;
    const std::wstring name = upperCased(std::wstring_view(full).substr(cut + 1));
    if (folder.names.contains(name)) return true;
    return !folder.complete && isThere(full);
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

void ExistingFiles::expect(std::wstring_view path) {
    const std::size_t cut = path.rfind(L'\\');
    if (cut == std::wstring::npos || spellingOf(path) != Spelling::Normal) return;
    if (expectedNames_.contains(path.substr(0, cut))) return;
    expectedNames_.emplace(path.substr(0, cut));
    expected_.push_back(parentFolder(path));
}

bool ExistingFiles::prepare(const LoopHooks& command) {
    const std::vector<std::wstring> folders = std::exchange(expected_, {});
    expectedNames_.clear();

    std::vector<std::wstring> roots;
    std::vector<Disk::Question> questions;
    for (const std::wstring& folder : folders) {
        const std::wstring root = driveName(folder);
        if (!roots_.try_emplace(root, true).second) continue;
        roots.push_back(root);
        questions.emplace_back(
            [root, answers = disk_.rootAnswers] { return Disk::Answer{answers(root)}; });
    }
    if (!disk_.askMany(questions, command, [&](std::size_t i, const Disk::Answer& answer) {
            roots_[roots[i]] = answer.there;
        })) {
        for (const std::wstring& root : roots) roots_.erase(root);
        return false;
    }

    std::vector<Folder*> asked;
    questions.clear();
    for (const std::wstring& path : folders) {
        Folder& folder = folders_[upperCased(path)];
        if (folder.operation == operation_) continue;
        folder.answers = rootAnswers(driveName(path));
        if (folder.answers) {
            asked.push_back(&folder);
            questions.push_back(questionFor(folder, path));
        } else {
            folder.operation = operation_;
        }
    }
    return disk_.askMany(questions, command, [&](std::size_t i, Disk::Answer answer) {
        asked[i]->operation = operation_;
        take(*asked[i], std::move(answer));
    });
}

void ExistingFiles::update(Folder& folder, const std::wstring& path) {
    folder.operation = operation_;
    folder.answers = !path.empty() && rootAnswers(driveName(path));
    if (!folder.answers) return;
    take(folder, disk_.ask(path, questionFor(folder, path)).value_or(Disk::Answer()));
}

ExistingFiles::Disk::Question ExistingFiles::questionFor(const Folder& folder,
                                                         const std::wstring& path) const {
    const auto known = folder.complete ? folder.stamp : std::nullopt;
    return [path, known, stamp = disk_.stamp, list = disk_.list] {
        Disk::Answer answer;
        // Taken before the listing: what happens during it shows the next time.
        answer.stamp = stamp(path);
        answer.unchanged = answer.stamp && answer.stamp == known;
        if (!answer.unchanged) answer.listing = list(path);
        return answer;
    };
}

void ExistingFiles::take(Folder& folder, Disk::Answer answer) {
    if (answer.unchanged) return;
    folder.stamp = answer.stamp;
    folder.complete = false;
    folder.names.clear();
    if (!answer.listing) return;
    folder.complete = answer.listing->complete;
    // One text for all names: a folder of thousands costs one allocation and one mapping.
    folder.text = upperCased(answer.listing->files);
    folder.names.reserve(std::ranges::count(folder.text, L'\\'));
    std::wstring_view rest = folder.text;
    for (std::size_t end; (end = rest.find(L'\\')) != rest.npos; rest.remove_prefix(end + 1))
        folder.names.insert(rest.substr(0, end));
}

bool ExistingFiles::rootAnswers(const std::wstring& root) {
    const auto [known, isNew] = roots_.try_emplace(root, true);
    if (!isNew) return known->second;
    const auto answer = disk_.ask(
        root, [root, answers = disk_.rootAnswers] { return Disk::Answer{answers(root)}; });
    known->second = !answer || answer->there;
    return known->second;
}

}  // namespace tunovka
