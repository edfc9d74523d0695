#include <windows.h>

#include <unordered_set>

#include "core/handle.h"
#include "core/loop.h"
#include "core/paths.h"
#include "core/rozneapi.h"
#include "core/system_windows.h"

namespace tunovka::RozneApi {
namespace {

struct IdentityHash {
    std::size_t operator()(const FileIdentity& identity) const {
        return std::hash<std::uint64_t>()(identity.index * 31 + identity.volume);
    }
};

// Which folders were visited, by identity. It costs nothing until the first link is met: without
// links no folder can come twice.
class Visits {
  public:
    // Called before the first visit that follows a link.
    void watch(const std::vector<std::wstring>& visited) {
        if (watching_) return;
        watching_ = true;
        for (const std::wstring& folder : visited) isNew(folder);
    }
    // True for a folder that was not visited yet, by this or another path.
    bool isNew(const std::wstring& folder) {
        FileIdentity identity;
        return !watching_ || !identityOf(folder, identity) || seen_.insert(identity).second;
    }

  private:
    bool watching_ = false;
    std::unordered_set<FileIdentity, IdentityHash> seen_;
};

class Collector {
  public:
    explicit Collector(const std::wstring& folder) : folders_{withBackslash(folder)} {}

    std::vector<std::wstring> run(const CollectProgress& progress,
                                  const std::function<bool()>& cancelled) {
        for (at_ = 0; at_ < folders_.size(); ++at_) {
            const std::wstring folder = folders_[at_];  // the list grows during the visit
            if (!visits_.isNew(folder)) continue;
            visit(folder);
            if (progress) progress(folder, files_.size());
            yieldToEvents();
            if (StopRequested || (cancelled && cancelled())) break;
        }
        return std::move(files_);
    }

  private:
    void visit(const std::wstring& folder) {
        const std::wstring usable = systemPathOrNone(folder);
        if (usable.empty()) return;
        WIN32_FIND_DATAW entry;
        const FindHandle search(FindFirstFileW((usable + L"*").c_str(), &entry));
        if (!search) return;
        do {
            take(folder, entry);
            yieldToEvents();
        } while (FindNextFileW(search.get(), &entry));
    }

    void take(const std::wstring& folder, const WIN32_FIND_DATAW& entry) {
        const wchar_t* const name = entry.cFileName;
        if (!(entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)) {
            files_.push_back(folder + name);
        } else if (wcscmp(name, L".") != 0 && wcscmp(name, L"..") != 0) {
            if (entry.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT)
                visits_.watch({folders_.begin(), folders_.begin() + at_ + 1});
            folders_.push_back(folder + name + L"\\");
        }
    }

    std::vector<std::wstring> folders_;  // the visited ones and, from at_ on, the queue
    std::size_t at_ = 0;
    std::vector<std::wstring> files_;
    Visits visits_;
};

}  // namespace

std::vector<std::wstring> CollectFiles(const std::wstring& folder, const CollectProgress& progress,
                                       const std::function<bool()>& cancelled) {
    StopRequested = 0;
    if (folder.empty()) return {};
    return Collector(folder).run(progress, cancelled);
}

}  // namespace tunovka::RozneApi
