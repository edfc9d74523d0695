#pragma once

#include <string>

#include "player/external_players.h"

namespace tunovka {

class ContentsTree;
class PlayerPanel;
class PopupMenu;

// Plays the file of the node selected in the contents tree, in the built-in player or in another
// program, and serves the entries of the sub-menu `ponuka_prehrať` with it.
class PlayMenu {
  public:
    PlayMenu(PopupMenu& menu, const ContentsTree& contents, PlayerPanel& player);

    // Asks the registry for the players that this machine has and switches their entries on.
    void findPlayers();

    // "tu" plays in the built-in player, any other text is a program's path. A program that cannot
    // be started and a node without a file are told in a notice.
    void PlaySelected(const std::wstring& program);

    // In the program that the system associates with the file; nothing when there is none.
    void playInDefaultProgram();

    // In a program that the person chooses in the system's own window.
    void playInChosenProgram();

  private:
    PopupMenu& menu_;
    const ContentsTree& contents_;
    PlayerPanel& player_;
    ExternalPlayers players_;
};

}  // namespace tunovka
