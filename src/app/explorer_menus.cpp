#include "app/explorer_menus.h"

#include "app/contents_tree.h"
#include "core/disk_questions.h"
#include "core/loop.h"
#include "core/rozneapi.h"
#include "core/text.h"
#include "player/player_panel.h"
#include "ui/frm_box.h"

namespace tunovka {
namespace {

// Starts another program; a failure is told and the program goes on.
template <typename Start>
void startOrTell(Start&& start) {
    try {
        start();
    } catch (const RuntimeError& error) {
        tellWhy(L"Program sa nepodarilo spustiť !\rChyba č. " + decimal(error.number) + L": " +
                error.description);
    }
}

}  // namespace

PopupMenu contentsMenu() {
    return PopupMenu({{L"info_o_subore", L"informácie o súbore"},
                      {L"editovat_playlist", L"editovať playlist", false},
                      {L"ponuka_prehrať",
                       L"prehrať súbor",
                       true,
                       {{L"prehraťtu", L"prehrať tu"},
                        {L"sep3"},
                        {L"prehraťvprog", L"prehrať v predvolenom programe"},
                        {L"prehrat_v_programe", L"prehrať v programe ..."},
                        {L"sep4"},
                        {L"prehratvoWinampe", L"prehrať vo Winampe", false},
                        {L"prehraťvowmp", L"prehrať v \"Windows Media Player\"", false},
                        {L"prehraťvmp2", L"prehrať v \"Media Player 2\"", false}}},
                      {L"operacie_so_suborom",
                       L"operácie so súborom",
                       true,
                       {{L"kopirovat_subor", L"kopírovať súbor"},
                        {L"vlozit_subor", L"vložiť súbor", false},
                        {L"sep1"},
                        {L"kopirovat_do", L"kopírovať súbor do ..."},
                        {L"preunut_do", L"presunúť súbor do ..."},
                        {L"sep2"},
                        {L"premenovat_subor", L"premenovať súbor"},
                        {L"vystrihnut_subo", L"vystrihnúť súbor"},
                        {L"zmazat_subor", L"zmazať súbor"}}}});
}

PopupMenu folderMenu() {
    return PopupMenu({{L"novy_plalist", L"vytvoriť nový playlist"},
                      {L"strom_vloz_subor", L"vložiť súbor", false},
                      {L"prehladaj_adresar", L"prehľadať adresár"}});
}

PopupMenu titleMenu() {
    return PopupMenu({{L"miminalizovat", L"Minimalizovať"},
                      {L"zavri", L"Zavrieť"},
                      {L"sep5"},
                      {L"o_programe", L"o programe"}});
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
        startOrTell([&] {
            askDisk(program, [program, path] { return playInProgram(program, path), true; });
            yieldNow();
        });
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
