// Every window as a person sees it.
#include "files/frm_kopirovanie.h"
#include "pictures/stage.h"
#include "ui/colors.h"
#include "ui/frm_box.h"

namespace tunovka {
namespace {

const std::wstring kList = L"veselica.pls", kSong = L"žabky pri jazere.mp3";
const std::wstring kFolder = L"E:\\Ľudové\\";

class Pictures : public Stage {
  protected:
    void inform(const std::wstring& picture) {
        expectForm(L"frminfo", picture, [&] { explorer.prehrat.choose(L"info_o_subore"); });
    }
    static void TearDownTestSuite() { Album::close(); }
};

TEST_F(Pictures, Explorer) {
    hold(L"explorer");
    const HWND drives = control(L"Drive1");
    SendMessageW(drives, CB_SHOWDROPDOWN, TRUE, 0);
    COMBOBOXINFO list{.cbSize = sizeof list};
    GetComboBoxInfo(drives, &list);
    Album::hold(L"drives", [&] { return Picture::of({explorer.handle(), list.hwndList}); });
    SendMessageW(drives, CB_SHOWDROPDOWN, FALSE, 0);

    choose(explorer.folders.strom, kFolder);
    press(control(L"strom"), VK_RIGHT);
    hold(L"folder");
    choose(explorer.contents.Tview, kList);
    press(control(L"Tview"), VK_RIGHT);
    hold(L"playlist");
    press(control(L"Tview"), VK_END);
    press(control(L"Tview"), VK_UP);
    inform(L"no-file");
}

TEST_F(Pictures, ExplorersControls) {
    const HWND boundary = control(L"Medzera");
    SendMessageW(boundary, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(2, 9));
    SendMessageW(boundary, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(102, 9));
    hold(L"boundary-dragged");
    SendMessageW(boundary, WM_LBUTTONUP, 0, MAKELPARAM(102, 9));
    explorer.folders.strom.setDropHighlight(kFolder);
    explorer.setClientSize({explorer.scaled(620), explorer.scaled(400)});
    hold(L"smallest");

    explorer.contents.Tview.clear();  // without a selection, play does nothing
    holdControls(L"explorer");
    const HWND volume = control(L"PicHlas");
    press(volume, VK_HOME);
    hold(L"silent");
    press(volume, VK_END);
    hold(L"loud");
}

TEST_F(Pictures, Player) {
    open(kFolder, kList);
    press(control(L"Tview"), VK_RIGHT);
    choose(explorer.contents.Tview, kSong);
    explorer.player.Timer1.setInterval(0);  // the scrolling text and the time stand still
    press(control(L"Image1"));
    ASSERT_TRUE(runUntil([&] { return !explorer.player.lblčas.text().empty(); }));
    explorer.player.mp.Pause();
    press(control(L"PicProgres"));  // in its middle
    const std::wstring title = explorer.player.lblnapis.text();
    Album::hold(L"playing", [&] {
        explorer.player.lblnapis.setText(title);
        explorer.player.Timer1.onTick();
        return picture(L"frmPrieskumnik");
    });
}

TEST_F(Pictures, Search) {
    explorer.menuprestrom.choose(L"prehladaj_adresar");
    const HWND count = control(L"frmhladanie", L"lblpočet");
    ASSERT_TRUE(runUntil([&] {
        return windowOf(count)->text().ends_with(L"16") &&
               !IsWindowVisible(control(L"frmhladanie", L"PicInfo"));
    }));
    hold(L"search", L"frmhladanie");
    holdMenu(L"search-menu", control(L"frmhladanie", L"Lview"), {VK_UP, VK_RIGHT});
    holdControls(L"search", L"frmhladanie");
}

TEST_F(Pictures, RunningSearch) {
    explorer.folders.Drive1.setDrive(L"z:");  // takes longer than one may wait
    const auto searches = [] {
        const Form* const window = openForm(L"frmhladanie");
        const Window* const folder = window ? controlNamed(*window, L"lblpriebeh") : nullptr;
        return folder && !folder->text().empty();
    };
    const When searching(searches, [] {
        Album::hold(L"searching", [] {
            Picture panel = picture(L"frmhladanie");
            panel.blank(L"lblpriebeh");
            panel.blank(L"lblnajdene");
            return panel;
        });
        press(control(L"frmhladanie", L"Istop"));
    });
    explorer.menuprestrom.choose(L"prehladaj_adresar");
    ASSERT_TRUE(
        runUntil([&] { return searching.happened() && !openForm(L"frmhladanie")->isBusy(); }));
}

TEST_F(Pictures, Editor) {
    choose(explorer.folders.strom, kFolder);
    explorer.menuprestrom.choose(L"novy_plalist");
    hold(L"new-editor", L"frmplejlist");
    auto& editor = dynamic_cast<frmplejlist&>(existing(openForm(L"frmplejlist"), L"frmplejlist"));
    for (const std::wstring& file : {kFolder + kSong, std::wstring(L"E:\\Čerešňový sad.mp3"),
                                     kFolder + L"Vianočné\\Kométa.wav"})
        editor.Lview_OLEDragDrop(file, {}, {});
    hold(L"editor", L"frmplejlist");
    expect({L"duplicate"}, {2});
    editor.Lview_OLEDragDrop(kFolder + kSong, {}, {});
    expect({L"links", L"written"}, {1, 1});
    person.saveAs({kFolder + L"Môj výber.m3u"});
    editor.menu1.choose(L"ulozit_ako_plejlist");
    press(control(L"frmplejlist", L"Lview"), VK_DELETE);
    expect({L"unsaved"}, {3, 2});
    editor.unload();
    editor.unload();
    choose(explorer.contents.Tview, L"môj výber.m3u");
    press(control(L"Tview"), VK_RIGHT);
    hold(L"saved");
    DeleteFileW((kFolder + L"Môj výber.m3u").c_str());
}

TEST_F(Pictures, LongList) {
    Editor& editor = edit(L"dlhý.m3u", 100).editor;
    const HWND thumb = control(L"frmplejlist", L"Iposuv");
    hold(L"list-start", L"frmplejlist");
    for (int i = 0; i < 2; ++i) press(thumb, VK_NEXT);
    hold(L"list-middle", L"frmplejlist");
    press(thumb, VK_END);
    hold(L"list-end", L"frmplejlist");
    holdMenu(L"editor-menu", control(L"frmplejlist", L"Lview"), {VK_UP, VK_RIGHT});
    holdControls(L"list", L"frmplejlist");
    for (int rows = 100; rows > 0; --rows) editor.removeAt(0);
    hold(L"emptied-list", L"frmplejlist");
}

TEST_F(Pictures, HighContrast) {
    chooseColors(true);
    edit(L"krátky.m3u", 3);
    RedrawWindow(explorer.handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN);
    expect({L"contrast-box"}, {1});
    ask(L"CHYBA", L"Text", L"ÁNO;NIE");
    hold(L"contrast-editor", L"frmplejlist");
    hold(L"contrast-explorer");
    chooseColors(false);
}

TEST_F(Pictures, AmpersandsAndLongPaths) {
    const std::wstring folder = kFolder + L"Tom & Jerry a ich veselé pesničky pre všetky deti\\";
    const std::wstring list = L"tom & jerry, výber toho najlepšieho za uplynulé polstoročie.m3u";
    CreateDirectoryW(folder.c_str(), nullptr);
    ScratchFolder::write(folder + list, "Tom & Jerry.mp3\r\n");
    explorer.folders.strom.expand(kFolder);
    open(folder, list);
    explorer.setClientSize({explorer.scaled(620), explorer.scaled(400)});
    hold(L"long-path");
    explorer.prehrat.choose(L"editovat_playlist");
    hold(L"long-path-editor", L"frmplejlist");
    DeleteFileW((folder + list).c_str());
    RemoveDirectoryW(folder.c_str());
}

// Noon: the same day wherever this runs.
void setDates(const std::wstring& path) {
    const SYSTEMTIME day{.wYear = 2026, .wMonth = 5, .wDay = 1, .wHour = 12};
    FILETIME time{};
    SystemTimeToFileTime(&day, &time);
    setTimes(path, &time, &time, &time);
}

TEST_F(Pictures, Menus) {
    open(kFolder, kSong);
    const HWND contents = control(L"Tview");
    explorer.prehrat.setEnabled(L"prehratvoWinampe", true);
    holdMenu(L"players", contents, {VK_DOWN, VK_DOWN, VK_DOWN, VK_RIGHT, VK_DOWN, VK_DOWN, VK_DOWN},
             {explorer.handle()});
    holdMenu(L"operations", contents, {VK_DOWN, VK_DOWN, VK_DOWN, VK_DOWN, VK_RIGHT});
    holdMenu(L"folder-menu", control(L"strom"), {});
    holdMenu(L"title-menu", explorer.handle(), {});
}

TEST_F(Pictures, Files) {
    open(kFolder, kSong);
    setDates(kFolder + kSong);
    inform(L"information");
    setDates(kFolder + kSong);
    SetFileAttributesW((kFolder + kSong).c_str(), FILE_ATTRIBUTE_READONLY);
    inform(L"read-only");
    SetFileAttributesW((kFolder + kSong).c_str(), FILE_ATTRIBUTE_NORMAL);
    expect({L"rename"});
    explorer.prehrat.choose(L"premenovat_subor");
    expect({L"delete"}, {2});
    explorer.prehrat.choose(L"zmazat_subor");
    expectForm(L"frmOprograme", L"about", [&] { explorer.tri.choose(L"o_programe"); });

    frmkopirovanie copying(explorer, kSong);
    copying.showProgress(37, 100);
    copying.show();
    hold(L"copying", L"frmkopirovanie");
    holdControls(L"copying", L"frmkopirovanie");
}

TEST_F(Pictures, Boxes) {
    expect({L"one-button"}, {1});
    ask(L"CHYBA", L"Nie je možné zobraziť súbory, nie sú dostatočné práva k načítaniu súborov.",
        L"No čo už ...");
    std::wstring text;
    for (int i = 1; i <= 80; ++i) text += L"Riadok " + std::to_wstring(i) + L"\r";
    expect({L"long-text"}, {1});
    ask(L"CHYBA", text, L"O.K.");
}

}  // namespace
}  // namespace tunovka
