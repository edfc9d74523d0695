#include "app/play_menu.h"

#include "app/contents_tree.h"
#include "core/errors.h"
#include "core/rozneapi.h"
#include "player/player_panel.h"
#include "ui/box.h"
#include "ui/popup_menu.h"

namespace tunovka {
namespace {

constexpr wchar_t kHere[] = L"tu";

void notify(const std::wstring& text) {
    ask(L"CHYBA", text, L"No čo už ...");
}

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
    if (!failure.empty()) notify(failure);
}

}  // namespace

PlayMenu::PlayMenu(PopupMenu& menu, const ContentsTree& contents, PlayerPanel& player)
    : menu_(menu), contents_(contents), player_(player) {
    menu.onClick(L"prehraťtu") = [this] { PlaySelected(kHere); };
    menu.onClick(L"prehraťvprog") = [this] { playInDefaultProgram(); };
    menu.onClick(L"prehrat_v_programe") = [this] { playInChosenProgram(); };
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

void PlayMenu::PlaySelected(const std::wstring& program) {
    const std::wstring path = contents_.selectedPath();
    if (path.empty()) {
        notify(L"Súbor sa v zadanom umiestnení nenacházda !!!");
    } else if (program == kHere) {
        player_.play(path);
    } else {
        startOrTell([&] { playInProgram(program, path); });
    }
}

void PlayMenu::playInDefaultProgram() {
    const std::wstring path = contents_.selectedPath();
    const std::wstring program = path.empty() ? path : RozneApi::FindAssociatedProgram(path);
    if (!program.empty()) PlaySelected(program);
}

void PlayMenu::playInChosenProgram() {
    const std::wstring path = contents_.selectedPath();
    if (path.empty()) {
        notify(L"Súbor sa v zadanom umiestnení nenacházda !");
    } else {
        startOrTell([&] { openWith(path); });
    }
}

}  // namespace tunovka
