#include "core/rozneapi.h"

#include "core/disk_questions.h"
#include "core/disk_windows.h"
#include "core/loop.h"
#include "core/paths.h"
#include "core/system_windows.h"
#include "core/text.h"

namespace tunovka::RozneApi {
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
