#include "core/rozneapi.h"

#include <iterator>
#include <set>

#include "core/disk_questions.h"
#include "core/disk_windows.h"
#include "core/paths.h"
#include "core/system_windows.h"

namespace tunovka::RozneApi {
namespace {

// What a worker finds in a folder.
struct Visit {
    std::vector<std::wstring> files;    // whole paths
    std::vector<std::wstring> folders;  // whole paths, ending in "\"
    bool hasLinks = false;              // some of the folders are links
};

// In one piece of memory of just that size, since a million of them are kept.
std::wstring pathOf(const std::wstring& folder, std::wstring_view name, std::wstring_view end) {
    std::wstring path;
    path.reserve(folder.size() + name.size() + end.size());
    return path.append(folder).append(name).append(end);
}

Visit visit(const std::wstring& folder) {
    Visit found;
    const std::wstring usable = systemPathOrNone(folder);
    if (usable.empty()) return found;
    Disk::list(usable, [&](const WIN32_FIND_DATAW& entry) {
        if (!(entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)) {
            found.files.push_back(pathOf(folder, entry.cFileName, L""));
        } else {
            found.folders.push_back(pathOf(folder, entry.cFileName, L"\\"));
            if (entry.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) found.hasLinks = true;
        }
        return true;
    });
    return found;
}

// Workers visit the folders that come next; what they find is taken in the order of the folders.
class Collector {
  public:
    Collector(const std::wstring& folder, const LoopHooks& hooks)
        : hooks_{hooks.letEventsRun,
                 [&hooks] { return StopRequested || (hooks.cancelled && hooks.cancelled()); }},
          folders_{withBackslash(folder)} {}

    std::vector<std::wstring> run(const CollectProgress& progress) {
        while (at_ < folders_.size()) {
            lookAhead();
            std::optional<Visit> found = visits_.next(hooks_);
            if (!found) break;
            const bool isNew = !watching_ || remember(at_, at_ + 1);
            if (isNew) take(std::move(*found));
            if (isNew && progress) progress(folders_[at_], files_.size());
            ++at_;
            if (!hooks_.next()) break;
        }
        return std::move(files_);
    }

  private:
    void lookAhead() {
        for (; ahead_ < folders_.size() && !visits_.full(); ++ahead_)
            visits_.put([folder = folders_[ahead_]] { return visit(folder); });
    }

    void take(Visit found) {
        std::ranges::move(found.files, std::back_inserter(files_));
        std::ranges::move(found.folders, std::back_inserter(folders_));
        // Without links no folder can come twice.
        if (found.hasLinks && !watching_) {
            watching_ = true;
            remember(0, at_ + 1);
        }
    }

    // Remembers who the visited folders are; false when the last one was there before.
    bool remember(std::size_t from, std::size_t to) {
        bool isNew = true;
        const auto question = [&](std::size_t i) {
            return [folder = folders_[from + i]] { return identityOf(folder); };
        };
        askDiskMany(hooks_, to - from, question, [&](std::size_t, const auto& identity) {
            isNew = !identity || seen_.insert(*identity).second;
        });
        return isNew;
    }

    const LoopHooks hooks_;
    std::vector<std::wstring> folders_;  // the visited ones and, from at_ on, the queue
    std::size_t at_ = 0, ahead_ = 0;     // which is taken next, which is asked for next
    std::vector<std::wstring> files_;
    DiskQuestions<Visit> visits_;
    bool watching_ = false;
    std::set<FileIdentity> seen_;
};

}  // namespace

std::vector<std::wstring> CollectFiles(const std::wstring& folder, const CollectProgress& progress,
                                       const LoopHooks& hooks) {
    StopRequested = 0;
    if (folder.empty()) return {};
    return Collector(folder, hooks).run(progress);
}

std::vector<std::wstring> subfolderNames(const std::wstring& folder, std::size_t most) {
    std::vector<std::wstring> names;
    const std::wstring usable = systemPathOrNone(folder);
    if (usable.empty()) return names;
    Disk::list(usable, [&](const WIN32_FIND_DATAW& entry) {
        if (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) names.emplace_back(entry.cFileName);
        return names.size() < most;
    });
    return names;
}

bool HasSubfolders(const std::wstring& folder) {
    // The shell knows no longer ones.
    if (folder.size() >= MAX_PATH) return !subfolderNames(folder, 1).empty();
    return Disk::hasSubfolders(folder);
}

std::wstring FindAssociatedProgram(const std::wstring& path) {
    return Disk::associatedProgram(path);
}

}  // namespace tunovka::RozneApi
