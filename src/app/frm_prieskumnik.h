#pragma once

#include <array>
#include <string>
#include <utility>

#include "app/contents_tree.h"
#include "app/explorer_menus.h"
#include "app/folder_tree.h"
#include "app/splitter.h"
#include "files/file_commands.h"
#include "files/frm_kopirovanie.h"
#include "player/player_panel.h"
#include "ui/form.h"
#include "ui/label.h"
#include "ui/popup_menu.h"
#include "ui/program_links.h"

namespace tunovka {

// The explorer: the program's first window and the frame that puts its parts together.
class frmPrieskumnik : public Form, private ProgramLinks {
  public:
    frmPrieskumnik();

    // Shows the window and fills it: the start drive, then what the registry knows of players.
    void load();

    TextBox txtPath;         // the folder that the contents tree lists
    TextBox txtodkaz;        // commands of the other windows
    TextBox txtsubor;        // the file clipboard
    TextBox txtPrehladavaj;  // the folder to search

    Label LblBar;
    FolderTree folders;
    ContentsTree contents;
    Splitter splitter;
    PlayerPanel player;
    PopupMenu prehrat, menuprestrom, tri;
    FileCommands files;
    PlayMenu playing;

  protected:
    Size arrange(int stripBottom) override;
    void onUnload() override;
    bool queryUnload() override;
    std::wstring sessionBlock() const override { return CopyWatch::sessionBlock(); }
    std::optional<LRESULT> onMessage(UINT message, WPARAM wparam, LPARAM lparam) override;
    bool onShortcut(WORD key) override;
    void onMenuKey() override;
    void onPaintGround(HDC dc) const override;

  private:
    void tellExplorer(const std::wstring& command) override { txtodkaz.setText(command); }
    std::wstring shownFolder() const override { return txtPath.text(); }
    std::wstring folderToSearch() const override { return txtPrehladavaj.text(); }
    void openEditor(const std::wstring& command) override;
    void showInformation(const std::wstring& command) override;

    void bindHandlers();
    void txtodkaz_Change();
    bool Tview_KeyDown(WORD key);
    void info_o_subore_Click();

    void refreshFolder();
    void selectionChanged();
    void fileRenamed(const std::wstring& key, const std::wstring& name);
    void prepareTrees();

    std::array<std::pair<Window*, Rect>, 3> treePlaces_;  // the drive list last: it fills them
    int parts_ = 0;        // that are there beside the frame: the panel, then a tree each
    int leftShare_ = 300;  // of the folder tree's width in thousandths
};

}  // namespace tunovka
