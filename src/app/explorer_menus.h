#pragma once

#include "ui/popup_menu.h"

namespace tunovka {

// The explorer's three pop-up menus with their entries, captions and first states. Entries that
// need something that is not there yet (a player, a copied file, a selected node) are off.
PopupMenu contentsMenu();  // `prehrat`, of the contents tree
PopupMenu folderMenu();    // `menuprestrom`, of the folder tree
PopupMenu titleMenu();     // `tri`, of the title strip

}  // namespace tunovka
