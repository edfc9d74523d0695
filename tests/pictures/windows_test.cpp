// Every window as a person sees it.
#include "editor/frm_plejlist.h"
#include "files/frm_kopirovanie.h"
#include "pictures/stage.h"
#include "ui/box.h"

namespace tunovka {
namespace {

const std::wstring kFolk = L"Ľudové", kList = L"veselica.pls", kSong = L"žabky pri jazere.mp3";
const std::wstring kFolder = L"E:\\" + kFolk + L"\\";

class Pictures : public Stage {
  protected:
    static void TearDownTestSuite() { Album::close(); }
};

TEST_F(Pictures, Explorer) {
    hold("explorer");
    const HWND drives = control(L"Drive1");
    SendMessageW(drives, CB_SHOWDROPDOWN, TRUE, 0);
    COMBOBOXINFO list{.cbSize = sizeof list};
    GetComboBoxInfo(drives, &list);
    Album::hold("drives", [&] { return Picture::of({explorer.handle(), list.hwndList}); });
    SendMessageW(drives, CB_SHOWDROPDOWN, FALSE, 0);

    choose(control(L"strom"), kFolk);
    press(control(L"strom"), VK_RIGHT);
    hold("folder");
    choose(control(L"Tview"), kList);
    press(control(L"Tview"), VK_RIGHT);
    hold("playlist");
}

TEST_F(Pictures, Player) {
    open(kFolk, kList);
    press(control(L"Tview"), VK_RIGHT);
    choose(control(L"Tview"), kSong);
    explorer.player.Timer1.setInterval(0);  // the scrolling text and the time stand still
    press(control(L"Image1"));
    ASSERT_TRUE(runUntil([&] { return !explorer.player.lblčas.text().empty(); }));
    explorer.player.mp.Pause();
    const HWND strip = control(L"PicProgres");
    RECT area{};
    GetClientRect(strip, &area);
    click(strip, {area.right * 6 / 10, area.bottom / 2});
    explorer.player.Timer1.onTick();
    hold("playing");
}

TEST_F(Pictures, Search) {
    explorer.menuprestrom.choose(L"prehladaj_adresar");
    const HWND count = control(L"frmhladanie", L"lblpočet");
    ASSERT_TRUE(runUntil([&] {
        return windowOf(count)->text().ends_with(L"16") &&
               !IsWindowVisible(control(L"frmhladanie", L"PicInfo"));
    }));
    hold("search", L"frmhladanie");
}

TEST_F(Pictures, Editor) {
    choose(control(L"strom"), kFolk);
    explorer.menuprestrom.choose(L"novy_plalist");
    auto& editor = dynamic_cast<frmplejlist&>(windowOf(control(L"frmplejlist", L"Lview"))->form());
    for (const std::wstring& file : {kFolder + kSong, std::wstring(L"E:\\Čerešňový sad.mp3"),
                                     kFolder + L"Vianočné\\Kométa.wav"})
        editor.Lview_Drop(file, {}, {});
    hold("editor", L"frmplejlist");
    stops = {{L"frmBox", "duplicate", L"Itlačítko2"}};
    editor.Lview_Drop(kFolder + kSong, {}, {});
    stops = {{L"frmBox", "links", L"Itlačítko1"}, {L"frmBox", "written", L"Itlačítko1"}};
    saveAs = kFolder + L"Môj výber.m3u";
    editor.menu1.choose(L"ulozit_ako_plejlist");
    press(control(L"frmplejlist", L"Lview"), VK_DELETE);
    stops = {{L"frmBox", "unsaved", L"Itlačítko3"}, {L"frmBox", "", L"Itlačítko2"}};
    editor.unload();
    editor.unload();
    choose(control(L"Tview"), L"môj výber.m3u");
    press(control(L"Tview"), VK_RIGHT);
    hold("saved");
    DeleteFileW((kFolder + L"Môj výber.m3u").c_str());
}

// Noon: the same day wherever this runs.
void setDates(const std::wstring& path) {
    const SYSTEMTIME day{.wYear = 2026, .wMonth = 5, .wDay = 1, .wHour = 12};
    FILETIME time{};
    SystemTimeToFileTime(&day, &time);
    const FileHandle file(
        CreateFileW(path.c_str(), FILE_WRITE_ATTRIBUTES, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    SetFileTime(file.get(), &time, &time, &time);
}

TEST_F(Pictures, Menus) {
    open(kFolk, kSong);
    const HWND contents = control(L"Tview");
    explorer.prehrat.setEnabled(L"prehratvoWinampe", true);
    holdMenu("players", contents, {VK_DOWN, VK_DOWN, VK_DOWN, VK_RIGHT, VK_DOWN, VK_DOWN, VK_DOWN},
             {explorer.handle()});
    holdMenu("operations", contents, {VK_DOWN, VK_DOWN, VK_DOWN, VK_DOWN, VK_RIGHT});
    holdMenu("folder-menu", control(L"strom"), {});
    holdMenu("title-menu", explorer.handle(), {});
}

TEST_F(Pictures, Files) {
    open(kFolk, kSong);
    setDates(kFolder + kSong);
    stops = {{L"frminfo", "information", L"Tlacitko"}};
    explorer.prehrat.choose(L"info_o_subore");
    stops = {{L"frmVstup", "rename", L"Izrusit"}};
    explorer.prehrat.choose(L"premenovat_subor");
    stops = {{L"frmBox", "delete", L"Itlačítko2"}};
    explorer.prehrat.choose(L"zmazat_subor");
    stops = {{L"frmOprograme", "about", L"Tlacitko"}};
    explorer.tri.choose(L"o_programe");

    frmkopirovanie copying(explorer, kSong);
    copying.showProgress(37, 100);
    copying.show();
    hold("copying", L"frmkopirovanie");
}

TEST_F(Pictures, Boxes) {
    stops = {{L"frmBox", "one-button", L"Itlačítko1"}};
    ask(L"CHYBA", L"Nie je možné zobraziť súbory, nie sú dostatočné práva k načítaniu súborov.",
        L"No čo už ...");
    std::wstring text;
    for (int i = 1; i <= 80; ++i) text += L"Riadok " + std::to_wstring(i) + L"\r";
    stops = {{L"frmBox", "long-text", L"Itlačítko1"}};
    ask(L"CHYBA", text, L"O.K.");
}

}  // namespace
}  // namespace tunovka
