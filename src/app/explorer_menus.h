#pragma once

#include <string>

#include "player/external_players.h"
#include "ui/popup_menu.h"

namespace tunovka {

class ContentsTree;
class PlayerPanel;

// The explorer's three pop-up menus with their entries, captions and first states. Entries that
// need something that is not there yet (a player, a copied file, a selected node) are off.
PopupMenu contentsMenu();  // `prehrat`, of the contents tree
PopupMenu folderMenu();    // `menuprestrom`, of the folder tree
PopupMenu titleMenu();     // `tri`, of the title strip

// Stands for the built-in player where a program's path is expected.
inline constexpr wchar_t kHere[] = L"tu";

// Plays the file of the node selected in the contents tree, in the built-in player or in another
// program, and serves the entries of the sub-menu `ponuka_prehrať` with it.
class PlayMenu {
  public:
    PlayMenu(PopupMenu& menu, const ContentsTree& contents, PlayerPanel& player);

    // Asks the registry for the players that this machine has and switches their entries on.
    void findPlayers();

    // `program` is a program's path or kHere. What cannot be started or is not there is told.
    void PlaySelected(const std::wstring& program);

    // In what the system opens the file with; nothing when there is no such program.
    void prehraťvprog_Click();

    // In a program that the person chooses in the system's own window.
    void prehrat_v_programe_Click();

  private:
    void notifyNoFile(std::wstring_view missing) const;

    PopupMenu& menu_;
    const ContentsTree& contents_;
    PlayerPanel& player_;
    ExternalPlayers players_;
};

}  // namespace tunovka
