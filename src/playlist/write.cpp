#include "playlist/write.h"

#include "core/paths.h"
#include "core/text.h"

namespace tunovka {

std::wstring relativeEntryText(std::wstring_view folder, std::wstring_view path) {
    if (path.empty()) return {};
    // Cut at "\\" alone: "/" stays as it was read.
    const std::wstring name = afterLastBackslash(path);
    const std::wstring_view above = path.substr(0, path.size() - name.size());
    const std::wstring fileFolder =
        withBackslash(above.substr(0, above.find_last_not_of(L'\\') + 1));
    const std::wstring listFolder = withBackslash(folder);
    const std::size_t inside = fileFolder.find(listFolder);
    if (inside != std::wstring::npos) return fileFolder.substr(inside + listFolder.size()) + name;

    const std::wstring drive = driveName(fileFolder);
    if (drive != driveName(listFolder)) return fileFolder + name;
    return L".." + fileFolder.substr(drive.size()) + name;
}

std::vector<std::wstring> playlistLines(std::wstring_view chosenPath,
                                        const std::vector<std::wstring>& entryPaths, bool relative,
                                        const std::function<void()>& letEventsRun) {
    const bool isPls = chosenPath.ends_with(L".pls");
    const std::wstring folder = parentFolder(chosenPath);
    std::vector<std::wstring> lines;
    lines.reserve(entryPaths.size() + 2);
    if (isPls) lines.emplace_back(L"[playlist]");
    for (std::size_t i = 0; i < entryPaths.size(); ++i) {
        std::wstring line = isPls ? L"File" + decimal(i + 1) + L"=" : std::wstring();
        line += relative ? relativeEntryText(folder, entryPaths[i]) : entryPaths[i];
        lines.push_back(std::move(line));
        if (letEventsRun) letEventsRun();
    }
    if (isPls) lines.push_back(L"NumberOfEntries=" + decimal(entryPaths.size()));
    return lines;
}

std::string playlistBytes(const std::vector<std::wstring>& lines,
                          const std::function<std::string(std::wstring_view)>& toAnsi) {
    std::string bytes;
    for (const std::wstring& line : lines) bytes.append(toAnsi(line)).append("\r\n");
    return bytes;
}

}  // namespace tunovka
