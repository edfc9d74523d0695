#include "app/explorer_menus.h"

namespace tunovka {

PopupMenu contentsMenu() {
    return PopupMenu({
        {.name = L"info_o_subore", .caption = L"informácie o súbore"},
        {.name = L"editovat_playlist", .caption = L"editovať playlist", .enabled = false},
        {.name = L"ponuka_prehrať",
         .caption = L"prehrať súbor",
         .items =
             {
                 {.name = L"prehraťtu", .caption = L"prehrať tu"},
                 {.name = L"sep3"},
                 {.name = L"prehraťvprog", .caption = L"prehrať v predvolenom programe"},
                 {.name = L"prehrat_v_programe", .caption = L"prehrať v programe ..."},
                 {.name = L"sep4"},
                 {.name = L"prehratvoWinampe", .caption = L"prehrať vo Winampe", .enabled = false},
                 {.name = L"prehraťvowmp",
                  .caption = L"prehrať v \"Windows Media Player\"",
                  .enabled = false},
                 {.name = L"prehraťvmp2",
                  .caption = L"prehrať v \"Media Player 2\"",
                  .enabled = false},
             }},
        {.name = L"operacie_so_suborom",
         .caption = L"operácie so súborom",
         .items =
             {
                 {.name = L"kopirovat_subor", .caption = L"kopírovať súbor"},
                 {.name = L"vlozit_subor", .caption = L"vložiť súbor", .enabled = false},
                 {.name = L"sep1"},
                 {.name = L"kopirovat_do", .caption = L"kopírovať súbor do ..."},
                 {.name = L"preunut_do", .caption = L"presunúť súbor do ..."},
                 {.name = L"sep2"},
                 {.name = L"premenovat_subor", .caption = L"premenovať súbor"},
                 {.name = L"vystrihnut_subo", .caption = L"vystrihnúť súbor"},
                 {.name = L"zmazat_subor", .caption = L"zmazať súbor"},
             }},
    });
}

PopupMenu folderMenu() {
    return PopupMenu({
        {.name = L"novy_plalist", .caption = L"vytvoriť nový playlist"},
        {.name = L"strom_vloz_subor", .caption = L"vložiť súbor", .enabled = false},
        {.name = L"prehladaj_adresar", .caption = L"prehľadať adresár"},
    });
}

PopupMenu titleMenu() {
    return PopupMenu({
        {.name = L"miminalizovat", .caption = L"Minimalizovať"},
        {.name = L"zavri", .caption = L"Zavrieť"},
        {.name = L"sep5"},
        {.name = L"o_programe", .caption = L"o programe"},
    });
}

}  // namespace tunovka
