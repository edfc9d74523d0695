#include "core/existing_files.h"

#include <algorithm>
#include <mutex>
#include <utility>

#include "core/disk_windows.h"
#include "core/errors.h"
#include "core/file_system.h"
#include "core/paths.h"
#include "core/system_windows.h"
#include "core/text.h"

namespace tunovka {
namespace {

// A folder whose name ends in a dot or a blank: asked for alone, the system would take it for
// another one.
bool hasOddPart(std::wstring_view full) {
    return full.find(L" \\") != full.npos || full.find(L".\\") != full.npos;
}

bool isPlainName(std::wstring_view name) {
    return !name.empty() && name.back() != L'.' && name.back() != L' ' &&
           name.find(L':') == name.npos;
}

// Errors that say for certain that there is no such folder.
bool saysMissing(DWORD error) {
    return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND ||
           error == ERROR_DIRECTORY || error == ERROR_INVALID_NAME;
}

// A real question. A file that may not be looked at is not missing.
bool isThere(const std::wstring& path) {
    using namespace FileSystemObject;
    return !systemPathOrNone(path).empty() && presence(path) != Presence::Missing;
}

}  // namespace

// A drive or share, asked by the first question that needs it.
struct ExistingFiles::Root {
    // One that answers but refuses to be looked at may well have folders that do not.
    bool answers(const std::wstring& path) {
        const std::scoped_lock lock(mutex);
        if (known) return *known;
        const DWORD error = attributesOf(withBackslash(driveName(path))).error;
        known = !error || errorNumberOf(error) == kPermissionDenied;
        return *known;
    }

    std::mutex mutex;
    std::optional<bool> known;
};

// As far as the times can be trusted to change with the folder's files: FAT keeps none that do, and
// none finer than 10 ms; a link's own say nothing of its target; and a folder that was written to a
// moment before could be written to again within the same tick of the clock.
std::optional<ExistingFiles::Stamp> ExistingFiles::stampOf(const auto& folder, std::uint64_t now) {
    constexpr std::uint64_t kCoarse = 100'000;     // 10 ms, in units of 100 ns
    constexpr std::uint64_t kRecent = 20'000'000;  // 2 s
    if (folder.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) return std::nullopt;
    const Stamp stamp{ticks(folder.ftLastWriteTime), ticks(folder.ftCreationTime)};
    if (stamp.written % kCoarse == 0 || stamp.written + kRecent > now) return std::nullopt;
    return stamp;
}

ExistingFiles::Listing ExistingFiles::list(const std::wstring& folder) {
    Listing listing;
    const auto take = [&](const WIN32_FIND_DATAW& entry) {
        if (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) return true;
        listing.files.append(entry.cFileName).append(1, L'\\');
        if (entry.cAlternateFileName[0])
            listing.files.append(entry.cAlternateFileName).append(1, L'\\');
        return true;
    };
    // What happens during it shows the next time.
    const std::uint64_t begun = ticksNow();
    WIN32_FIND_DATAW own{};
    const DWORD error = Disk::list(systemPath(folder), take, L"*", &own);
    listing.stamp = stampOf(own, begun);
    listing.complete = error == ERROR_SUCCESS || (listing.files.empty() && saysMissing(error));
    return listing;
}

void ExistingFiles::beginOperation() {
    questions_.reset();
    asked_.clear();
    alone_.clear();
    count_ = 0;
    std::erase_if(folders_, [&](const auto& each) { return each.second.operation != operation_; });
    ++operation_;
    roots_.clear();
    spelled_.clear();
}

void ExistingFiles::ask(const std::wstring& path) {
    const std::size_t question = count_++;
    std::size_t cut = path.size();  // find_last_of() would call a search for each letter
    while (cut > 0 && path[cut - 1] != L'\\' && path[cut - 1] != L'/') --cut;
    const std::wstring_view name = std::wstring_view(path).substr(cut);
    if (name.empty()) return;  // a folder's name
    Folder* const folder = cut > 0 && isPlainName(name)
                               ? folderOf(std::wstring_view(path).substr(0, cut - 1))
                               : nullptr;
    if (!folder) return void(alone_.emplace_back(question, path));
    if (folder->operation != operation_) {
        folder->operation = operation_;
        folder->asked.clear();
        folder->questions.clear();
        if (!questions_) questions_.emplace();
        questions_->put(questionFor(*folder));
        asked_.push_back(folder);
    }
    folder->asked.append(name).append(1, L'\\');
    folder->questions.push_back(question);
}

std::optional<std::vector<bool>> ExistingFiles::answers(const LoopHooks& command) {
    std::vector<bool> answers(count_);
    for (Folder* const folder : asked_) {
        std::optional<Answer> listed = questions_->next(command);
        if (!listed || !command.next()) return std::nullopt;
        take(*folder, std::move(*listed));
        answer(*folder, answers);
    }
    asked_.clear();
    if (!askAlone(answers, command)) return std::nullopt;
    return answers;
}

// The questions about files of one folder, as far as its listing can tell.
void ExistingFiles::answer(const Folder& folder, std::vector<bool>& answers) {
    if (!folder.rootAnswers) return;
    const std::wstring names = upperCased(folder.asked);
    std::size_t begin = 0;
    for (const std::size_t question : folder.questions) {
        const std::size_t end = names.find(L'\\', begin), length = end - begin;
        const bool isListed = folder.names.contains(std::wstring_view(names).substr(begin, length));
        answers[question] = isListed;
        if (!isListed && !folder.listing.complete)
            alone_.emplace_back(question, folder.path + folder.asked.substr(begin, length));
        begin = end + 1;
    }
}

bool ExistingFiles::askAlone(std::vector<bool>& answers, const LoopHooks& command) {
    const auto question = [&](std::size_t i) {
        return [path = alone_[i].second] { return isThere(path); };
    };
    return askDiskMany(command, alone_.size(), question,
                       [&](std::size_t i, bool isThere) { answers[alone_[i].first] = isThere; });
}

ExistingFiles::Folder* ExistingFiles::folderOf(std::wstring_view spelling) {
    if (const auto known = spelled_.find(spelling); known != spelled_.end()) return known->second;
    Folder*& known = spelled_[std::wstring(spelling)];
    const std::wstring path = std::wstring(spelling) + L'\\';
    const std::wstring full = systemPathOrNone(path).empty() ? std::wstring() : fullPath(path);
    if (driveName(full).empty() || hasOddPart(full)) return nullptr;
    Folder& folder = folders_[upperCased(full)];
    folder.path = full;
    return known = &folder;
}

std::function<ExistingFiles::Answer()> ExistingFiles::questionFor(const Folder& folder) {
    std::shared_ptr<Root>& root = roots_[upperCased(driveName(folder.path))];
    if (!root) root = std::make_shared<Root>();
    const auto known = folder.listing.complete ? folder.listing.stamp : std::nullopt;
    return [path = folder.path, known, root] {
        Answer answer{.rootAnswers = root->answers(path)};
        if (!answer.rootAnswers) return answer;
        WIN32_FILE_ATTRIBUTE_DATA is;
        if (known && !Disk::details(systemPath(path), is) && known == stampOf(is, ticksNow()))
            return answer;
        answer.listing = list(path);
        return answer;
    };
}

void ExistingFiles::take(Folder& folder, Answer answer) {
    folder.rootAnswers = answer.rootAnswers;
    if (!answer.listing) return;
    folder.names.clear();
    folder.listing = std::move(*answer.listing);
    // One text for all names: a folder of thousands costs one allocation and one mapping.
    std::wstring& files = folder.listing.files;
    files = upperCased(files);
    folder.names.reserve(std::ranges::count(files, L'\\'));
    std::wstring_view rest = files;
    for (std::size_t end; (end = rest.find(L'\\')) != rest.npos; rest.remove_prefix(end + 1))
        folder.names.insert(rest.substr(0, end));
}

}  // namespace tunovka
