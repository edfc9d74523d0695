#include "app/explorer_menus.h"

#include "app/contents_tree.h"
#include "core/disk_questions.h"
#include "core/errors.h"
#include "core/rozneapi.h"
#include "player/player_panel.h"
#include "ui/frm_box.h"

namespace tunovka {
namespace {

// Starts another program; a failure is told and the program goes on.
template <typename Start>
void startOrTell(Start&& start) {
    std::wstring failure;
    try {
        start();
    } catch (const RuntimeError& error) {
        failure = L"Program sa nepodarilo spustiť !\rChyba č. " + std::to_wstring(error.number) +
                  L": " + error.description;
    }
    if (!failure.empty()) tellWhy(failure);
}

}  // namespace

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

PlayMenu::PlayMenu(PopupMenu& menu, const ContentsTree& contents, PlayerPanel& player)
    : menu_(menu), contents_(contents), player_(player) {
    menu.onClick(L"prehraťtu") = [this] { PlaySelected(kHere); };
    menu.onClick(L"prehraťvprog") = [this] { prehraťvprog_Click(); };
    menu.onClick(L"prehrat_v_programe") = [this] { prehrat_v_programe_Click(); };
    menu.onClick(L"prehratvoWinampe") = [this] { PlaySelected(players_.winamp); };
    menu.onClick(L"prehraťvowmp") = [this] { PlaySelected(players_.windowsMediaPlayer); };
    menu.onClick(L"prehraťvmp2") = [this] { PlaySelected(players_.mediaPlayer2); };
}

void PlayMenu::findPlayers() {
    players_ = ExternalPlayers::find();
    menu_.setEnabled(L"prehratvoWinampe", !players_.winamp.empty());
    menu_.setEnabled(L"prehraťvowmp", !players_.windowsMediaPlayer.empty());
    menu_.setEnabled(L"prehraťvmp2", !players_.mediaPlayer2.empty());
}

void PlayMenu::notifyNoFile(std::wstring_view missing) const {
    tellWhy(contents_.whyNoFile(contents_.Tview.selectedKey(), missing));
}

void PlayMenu::PlaySelected(const std::wstring& program) {
    const std::wstring path = contents_.selectedPath();
    if (path.empty()) {
        notifyNoFile(L"Súbor sa v zadanom umiestnení nenacházda !!!");
    } else if (program == kHere) {
        player_.play(path);
    } else {
        startOrTell([&] { playInProgram(program, path); });
    }
}

void PlayMenu::prehraťvprog_Click() {
    const std::wstring path = contents_.selectedPath();
    if (path.empty()) return;
    const auto program = askDisk(path, [path] { return RozneApi::FindAssociatedProgram(path); });
    if (!program) return;
    if (program->empty())
        askDisk(path, [path] { return openByAssociation(path), true; });
    else
        PlaySelected(*program);
}

void PlayMenu::prehrat_v_programe_Click() {
    const std::wstring path = contents_.selectedPath();
    if (path.empty()) {
        notifyNoFile(L"Súbor sa v zadanom umiestnení nenacházda !");
    } else {
        startOrTell([&] { openWith(path); });
    }
}

}  // namespace tunovka
