#include <algorithm>

#include "core/disk_questions.h"
#include "core/disk_windows.h"
#include "core/errors.h"
#include "core/existing_files.h"
#include "core/paths.h"
#include "core/system_windows.h"

namespace tunovka {
namespace {

std::uint64_t ticks(const FILETIME& time) {
    return joined(time.dwHighDateTime, time.dwLowDateTime);
}

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
    const DWORD error = Disk::list(usable, [&](const WIN32_FIND_DATAW& entry) {
        if (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) return true;
        listing.files.append(entry.cFileName).append(1, L'\\');
        if (entry.cAlternateFileName[0])
            listing.files.append(entry.cAlternateFileName).append(1, L'\\');
        return true;
    });
    listing.complete = error == ERROR_SUCCESS || (listing.files.empty() && saysMissing(error));
    if (!listing.complete && listing.files.empty()) return std::nullopt;
    return listing;
}

// The folder's times, as far as they can be trusted to change with its files. FAT keeps none that
// do, and keeps all its times in steps of 10 ms or more: times that fine come from a file system
// that does. A link's own times say nothing of its target. A folder that was written to a moment
// ago could be written to again within the same tick of the clock.
std::optional<ExistingFiles::Disk::Stamp> stamp(const std::wstring& folder) {
    constexpr std::uint64_t kCoarse = 100'000;     // 10 ms, in units of 100 ns
    constexpr std::uint64_t kMoment = 20'000'000;  // 2 s
    const std::wstring usable = systemPathOrNone(folder);
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (usable.empty() || Disk::details(usable, data) ||
        data.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT)
        return std::nullopt;
    FILETIME now;
    GetSystemTimeAsFileTime(&now);
    const ExistingFiles::Disk::Stamp stamp{ticks(data.ftLastWriteTime), ticks(data.ftCreationTime)};
    if (stamp.written % kCoarse == 0 || stamp.written + kMoment > ticks(now)) return std::nullopt;
    return stamp;
}

// A file that may not even be looked at counts as there: nobody could say that it is missing.
bool exists(const std::wstring& path) {
    DWORD error = ERROR_SUCCESS;
    const DWORD attributes = attributesOf(path, error);
    if (error) return error == ERROR_ACCESS_DENIED;
    return !(attributes & FILE_ATTRIBUTE_DIRECTORY) && path.back() != L'\\';
}

// A root that answers but refuses to be looked at may well have folders that do not.
bool answers(const std::wstring& root) {
    DWORD error = ERROR_SUCCESS;
    attributesOf(withBackslash(root), error);
    return !error || errorNumberOf(error) == kPermissionDenied;
}

std::optional<ExistingFiles::Disk::Answer> askOne(const std::wstring& path,
                                                  const ExistingFiles::Disk::Question& question) {
    return askDisk(path, question);
}

bool askMany(const std::vector<ExistingFiles::Disk::Question>& questions, const LoopHooks& command,
             const ExistingFiles::Disk::Take& take) {
    using Answers = std::vector<ExistingFiles::Disk::Answer>;
    // A worker takes a few at a time: handing one over costs more than a quick answer.
    const std::size_t few = questions.size() >= 64 ? 4 : 1;
    const auto from = [&](std::size_t first) {
        const std::size_t last = std::min(first + few, questions.size());
        return [part = std::vector(questions.begin() + first, questions.begin() + last)] {
            Answers answers;
            for (const auto& question : part) answers.push_back(question());
            return answers;
        };
    };
    DiskQuestions<Answers> asked;
    std::size_t ahead = 0;
    for (std::size_t i = 0; i < questions.size();) {
        for (; ahead < questions.size() && !asked.full(); ahead += few) asked.put(from(ahead));
        std::optional<Answers> answers = asked.next(command);
        if (!answers) return false;
        for (ExistingFiles::Disk::Answer& answer : *answers) take(i++, std::move(answer));
        if (!command.next()) return false;
    }
    return true;
}

}  // namespace

ExistingFiles::ExistingFiles()
    : ExistingFiles(Disk{list, stamp, exists, fullPath, answers, askOne, askMany}) {}

}  // namespace tunovka
