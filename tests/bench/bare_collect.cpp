#include "bench/bench.h"
#include "core/handle.h"

namespace tunovka::bench {

std::vector<std::wstring> bareCollect(const std::wstring& root) {
    std::vector<std::wstring> folders{root}, files;
    for (std::size_t at = 0; at < folders.size(); ++at) {
        const std::wstring folder = folders[at];
        WIN32_FIND_DATAW entry;
        const FindHandle search(FindFirstFileW((folder + L"*").c_str(), &entry));
        if (!search) continue;
        do {
            if (!(entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY))
                files.push_back(folder + entry.cFileName);
            else if (wcscmp(entry.cFileName, L".") != 0 && wcscmp(entry.cFileName, L"..") != 0)
                folders.push_back(folder + entry.cFileName + L"\\");
        } while (FindNextFileW(search.get(), &entry));
    }
    return files;
}

}  // namespace tunovka::bench
