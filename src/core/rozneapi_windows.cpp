#include "core/rozneapi.h"

#include "core/disk_questions.h"
#include "core/disk_windows.h"
#include "core/loop.h"
#include "core/paths.h"
#include "core/system_windows.h"
#include "core/text.h"

namespace tunovka::RozneApi {
namespace {

// The names of a folder's sub-folders, at most so many.
std::vector<std::wstring> subfolderNames(const std::wstring& folder, std::size_t most = SIZE_MAX) {
    std::vector<std::wstring> names;
    const std::wstring usable = systemPathOrNone(folder);
    if (usable.empty()) return names;
    Disk::list(usable, [&](const WIN32_FIND_DATAW& entry) {
        if (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) names.emplace_back(entry.cFileName);
        return names.size() < most;
    });
    return names;
}

}  // namespace

bool HasSubfolders(const std::wstring& folder) {
    // The shell knows no longer ones.
    if (folder.size() >= MAX_PATH) return !subfolderNames(folder, 1).empty();
    return Disk::hasSubfolders(folder);
}

void AddSubfolderNodes(FolderNodes& tree, const std::wstring& parentKey, const LoopHooks& hooks) {
    const auto names = askDisk(hooks, [folder = withBackslash(parentKey)] {
        return HasSubfolders(folder) ? subfolderNames(folder) : std::vector<std::wstring>();
    });
    if (!names) return;
    const auto hasMore = [&](std::size_t i) {
        return [key = parentKey + (*names)[i] + L"\\"] { return HasSubfolders(key); };
    };
    // While events run the tree may be filled anew.
    const LoopHooks whileThere{
        hooks.letEventsRun,
        [&] { return (hooks.cancelled && hooks.cancelled()) || !tree.hasNode(parentKey); }};
    askDiskMany(whileThere, names->size(), hasMore, [&](std::size_t i, bool more) {
        const std::wstring key = parentKey + (*names)[i] + L"\\";
        if (!tree.hasNode(parentKey) || tree.hasNode(key)) return;
        tree.add(parentKey, key, (*names)[i]);
        if (more) tree.add(key, key + kPlaceholderSuffix, kPlaceholderText);
    });
    yieldNow();
}

std::wstring FindAssociatedProgram(const std::wstring& path) {
    return Disk::associatedProgram(path);
}

}  // namespace tunovka::RozneApi
