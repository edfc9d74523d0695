#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace tunovka {

// A hidden one-line text through which windows hand each other a command or a value. The change
// handler runs each time that another text is set; the handler may set the text itself.
class TextBox {
  public:
    const std::wstring& text() const { return text_; }

    void setText(const std::wstring& text) {
        if (text == text_) return;
        text_ = text;
        if (onChange) onChange();
    }

    std::function<void()> onChange;

  private:
    std::wstring text_;
};

// The texts that windows write into each other's `txtodkaz` are made and read only here.

// To the explorer: list the shown folder again, or play a file ("" is told as a missing one).
inline constexpr wchar_t kRefreshCommand[] = L"obnoviť";
inline constexpr std::wstring_view kPlayCommand = L"hraj:";

// The path of a command to play, nullopt for any other text.
inline std::optional<std::wstring> pathToPlay(std::wstring_view command) {
    if (!command.starts_with(kPlayCommand)) return std::nullopt;
    return std::wstring(command.substr(kPlayCommand.size()));
}

// To an editor, in place of a playlist's path: an empty playlist. A text that begins so counts.
inline constexpr std::wstring_view kNewPlaylist = L"nový playlist";

inline bool asksForNewPlaylist(std::wstring_view command) {
    return command.starts_with(kNewPlaylist);
}

// To the information window, in place of a path: the file is missing.
inline constexpr wchar_t kMissingFileCommand[] = L"chyba";

// What a window may ask of the rest of the program, which the explorer implements.
class ProgramLinks {
  public:
    virtual ~ProgramLinks() = default;

    void play(const std::wstring& path) { tellExplorer(std::wstring(kPlayCommand) + path); }
    void refresh() { tellExplorer(kRefreshCommand); }
    void openNewEditor() { openEditor(std::wstring(kNewPlaylist)); }
    void showMissingFile() { showInformation(kMissingFileCommand); }

    // The folder that the contents tree shows (`txtPath`), ending in "\"; "" when there is none.
    virtual std::wstring shownFolder() const = 0;
    // The folder that is to be searched (`txtPrehladavaj`).
    virtual std::wstring folderToSearch() const = 0;
    // Opens a new editor with this text in its `txtodkaz`: a playlist's path, or as above.
    virtual void openEditor(const std::wstring& command) = 0;
    // Shows the file information window with this text in its `txtodkaz`: a path, or as above.
    virtual void showInformation(const std::wstring& command) = 0;

  protected:
    // Writes a command into the explorer's `txtodkaz`.
    virtual void tellExplorer(const std::wstring& command) = 0;
};

}  // namespace tunovka
