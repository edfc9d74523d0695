#pragma once

#include <string>

namespace tunovka {

// The commands of the explorer's `txtodkaz`: list the shown folder again; play the path that
// follows.
inline constexpr wchar_t kRefreshCommand[] = L"obnoviť";
inline constexpr wchar_t kPlayCommand[] = L"hraj:";

// What a window may ask of the rest of the program. The explorer implements it and hands it to the
// windows that it opens; the texts are the program's own command channels.
class ProgramLinks {
  public:
    virtual ~ProgramLinks() = default;

    // Writes a command into the explorer's `txtodkaz`.
    virtual void tellExplorer(const std::wstring& command) = 0;
    // The folder that the contents tree shows (`txtPath`), ending in "\"; "" when there is none.
    virtual std::wstring shownFolder() const = 0;
    // The folder that is to be searched (`txtPrehladavaj`).
    virtual std::wstring folderToSearch() const = 0;
    // Opens a new playlist editor with this text in its `txtodkaz`: a playlist's path or
    // "nový playlist".
    virtual void openEditor(const std::wstring& command) = 0;
    // Shows the file information window with this text in its `txtodkaz`: a path or "chyba".
    virtual void showInformation(const std::wstring& command) = 0;
};

}  // namespace tunovka
