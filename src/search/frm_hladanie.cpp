#include "search/frm_hladanie.h"

#include "core/ansi.h"
#include "core/disk_questions.h"
#include "core/file_system.h"
#include "core/loop.h"
#include "core/rozneapi.h"
#include "core/text.h"
#include "playlist/write.h"
#include "ui/drag_drop.h"
#include "ui/frm_box.h"
#include "ui/painting.h"
#include "ui/system_dialogs.h"

namespace tunovka {
namespace {

// Sizes in 96ths of an inch.
constexpr Size kSize{520, 460};
constexpr Size kMinimum{380, 300};
constexpr int kMargin = 8;
constexpr Size kPanel{340, 128};
constexpr int kPanelMargin = 12;

constexpr DWORD kPause = 100;  // ms between two reports of the panel

constexpr wchar_t kCollectingPhase[] = L"Prebieha prehľadávanie adresára";
constexpr wchar_t kSortingOutPhase[] = L"Prebieha spracovanie súborov";
constexpr wchar_t kListingPhase[] = L"Prebieha výpis súborov";

constexpr wchar_t kName[] = L"frmhladanie";
constexpr wchar_t kTag[] = L"hladanie";
constexpr wchar_t kExportFilter[] = L"playlist Winampu (*.m3u)|*.m3u|Textový súbor (*.txt)|*.txt";

PopupMenu resultMenu() {
    return PopupMenu(
        {{L"info_o_subore", L"info o súbore", false},
         {L"prehrat", L"prehrať"},
         {L"upravit_playlist", L"upraviť playlist", false},
         {L"uloz_playlist", L"uložiť výsledok hľadania ako playlist", false},
         {L"zoradit",
          L"zoradiť",
          true,
          {{L"vzostupne", L"vzostupne ( A-Z )"}, {L"zostupne", L"zostupne ( Z-A )"}}}});
}

}  // namespace

ScanPanel::ScanPanel(Form& form)
    : PicInfo({.name = L"PicInfo",
               .text = L"Priebeh prehľadávania",
               .parent = &form,
               .visible = false,
               .container = true}),
      Label1({.name = L"Label1",
              .caption = kCollectingPhase,
              .parent = &PicInfo,
              .format = DT_CENTER,
              .font = Skin::Font::Bold}),
      Istop({.name = L"Istop",
             .text = L"Zastaviť",
             .parent = &PicInfo,
             .normal = Istop1,
             .pressed = Istop2,
             .caption = L"Zastaviť"}),
      form_(form),
      folder_({.name = L"lblpriebeh", .parent = &PicInfo, .format = DT_CENTER | DT_PATH_ELLIPSIS}),
      found_({.name = L"lblnajdene", .parent = &PicInfo, .format = DT_CENTER}) {
    PicInfo.onPaint = [](HDC dc, Size size) {
        const RECT area{0, 0, size.width, size.height};
        fillGradient(dc, area, colors().panelLight, colors().track);
        frameRect(dc, area, colors().rim);
    };
    Istop.onPress = [] { StopRequested = -1; };
}

void ScanPanel::begin() {
    Label1.setText(kCollectingPhase);
    folder_.setText(L"");
    found_.setText(L"");
    shownAt_ = 0;
    place();
    PicInfo.setVisible(true);
    if (GetActiveWindow() == form_.handle()) Istop.focus();
}

void ScanPanel::end() {
    const bool hadFocus = Istop.hasFocus();
    PicInfo.setVisible(false);
    if (hadFocus) form_.focus();  // a hidden button would still take the keys
}

void ScanPanel::progress(const std::wstring& folder, std::size_t found) {
    if (GetTickCount() - shownAt_ < kPause) return;
    shownAt_ = GetTickCount();
    folder_.setText(folder);
    found_.setText(L"nájdených súborov: " + trimBlanks(formatGrouped(found)));
}

void ScanPanel::place() {
    const Size window = form_.clientSize();
    const int margin = form_.scaled(kPanelMargin), line = Skin::lineHeight(form_.dpi());
    const int width = form_.scaled(kPanel.width);
    const int height = std::max(form_.scaled(kPanel.height), 4 * line + 4 * margin);
    PicInfo.setBounds({(window.width - width) / 2, (window.height - height) / 2, width, height});
    int top = margin;
    for (Label* label : {&Label1, &folder_, &found_}) {
        label->setBounds({margin, top, width - 2 * margin, line});
        top += line + form_.scaled(2);
    }
    const Size stop = Istop.naturalSize();
    Istop.setBounds(
        {(width - stop.width) / 2, height - margin - stop.height, stop.width, stop.height});
}

frmhladanie::frmhladanie(ProgramLinks& links)
    : Form({.name = kName,
            .title = L"Prehľadávanie adresára",
            .size = kSize,
            .minimum = kMinimum,
            .closer = L"Tlacitko"}),
      lbladresar({.name = L"lbladresar",
                  .parent = this,
                  .format = DT_PATH_ELLIPSIS,
                  .font = Skin::Font::Bold}),
      Label3({.name = L"Label3", .caption = L"Počet súborov: ", .parent = this}),
      lblpočet({.name = L"lblpočet", .parent = this}),
      lblbar({.name = L"lblbar", .parent = this, .format = DT_PATH_ELLIPSIS, .status = true}),
      Lview({.name = L"Lview",
             .text = L"Nájdené súbory",
             .parent = this,
             .header = L"Nájdené súbory",
             .visible = false},
            result),
      scroller(*this, Lview, roundHalfEven),
      panel(*this),
      menu1(resultMenu()),
      links_(links),
      startScan_([this] { startScan(); }) {
    tag = kTag;
    bindHandlers();
    placeBesideOthers();
    layout();
}

void frmhladanie::bindHandlers() {
    Lview.onMouseDown = [this](MouseButton, Point) { Lview_ItemClick(); };
    Lview.onSelectionByKey = [this] { Lview_ItemClick(); };
    Lview.onDoubleClick = [this] { prehrat_Click(); };
    Lview.onContextMenu = [this](Point screen) { showMenu(screen); };
    Lview.onBeginDrag = [this](std::size_t) {
        const std::wstring key = Lview.selectedKey();
        if (!key.empty()) dragText(key, {.source = Lview.name(), .key = tag});
    };

    menu1.onClick(L"info_o_subore") = [this] { links_.showInformation(Lview.selectedKey()); };
    menu1.onClick(L"prehrat") = [this] { prehrat_Click(); };
    menu1.onClick(L"upravit_playlist") = [this] { links_.openEditor(Lview.selectedKey()); };
    menu1.onClick(L"uloz_playlist") = [this] { uloz_playlist_Click(); };
    menu1.onClick(L"vzostupne") = [this] { sortBy(SortOrder::Ascending); };
    menu1.onClick(L"zostupne") = [this] { sortBy(SortOrder::Descending); };
}

void frmhladanie::open(ProgramLinks& links) {
    Form* const loaded = Forms::find(kName);
    Form& form = loaded ? *loaded : Forms::load<frmhladanie>(links);
    form.show();
}

// The window may become active many times; only another folder starts a search.
void frmhladanie::onActivated() {
    if (!Forms::find(L"frmPrieskumnik")) return;
    const std::wstring folder = links_.folderToSearch();
    if (folder.empty() || folder == lbladresar.text()) return;
    lbladresar.setText(folder);
    lblpočet.setText(L"");
    lblbar.setText(L"");
    result.clear();
    scroller.hide();
    wanted_ = true;
    startScan_.raise();
}

// A running search ends at its next check and then starts the one that waits.
void frmhladanie::startScan() {
    if (!wanted_ || isBusy() || isClosing()) return;
    wanted_ = false;
    const Depth alive(this);
    try {
        ScanFolder(lbladresar.text());
    } catch (...) {
        panel.end();
        startScan_.raise();
        throw;
    }
    startScan_.raise();
}

void frmhladanie::ScanFolder(const std::wstring& folder) {
    const Busy busy(*this);
    panel.begin();
    Lview.setVisible(false);
    yieldNow();
    StopRequested = 0;
    scroller.hide();
    if (isAbandoned()) return;

    const auto progress = [this](const std::wstring& visited, std::size_t found) {
        if (!isAbandoned()) panel.progress(visited, found);
    };
    const LoopHooks hooks{yieldToEvents, [this] { return isAbandoned(); }};
    std::vector<std::wstring> files = RozneApi::CollectFiles(folder, progress, hooks);
    if (isAbandoned()) return;
    const bool stopped = StopRequested;
    lblpočet.setText(formatGrouped(files.size()) + (stopped ? L" - prerušené" : L""));
    if (stopped) {
        StopRequested = 0;
        menu1.setEnabled(L"info_o_subore", false);
        menu1.setEnabled(L"uloz_playlist", false);
    }
    if (files.size() <= 1) return panel.end();  // a single file is as good as none
    listFiles(std::move(files));
}

// The second and third phase. A stop there leaves what was looked at so far.
void frmhladanie::listFiles(std::vector<std::wstring> files) {
    const LoopHooks hooks{yieldToEvents, [this] { return StopRequested || isAbandoned(); }};
    panel.Label1.setText(kSortingOutPhase);
    yieldNow();
    keepMusicAndPlaylists(files, hooks);
    if (isAbandoned()) return;
    lblpočet.setText(lblpočet.text() + L", z toho hudobné: " + formatGrouped(files.size()));

    StopRequested = 0;
    panel.Label1.setText(kListingPhase);
    result.list(std::move(files), hooks);
    yieldNow();  // showing the list takes a while of its own
    if (isAbandoned()) return;
    showResult();
}

void frmhladanie::showResult() {
    Lview.setVisible(true);
    if (result.isEmpty()) return panel.end();
    Lview.ensureVisible(0);
    Lview.select(0);
    menu1.setEnabled(L"info_o_subore", true);
    menu1.setEnabled(L"uloz_playlist", true);
    panel.end();
    if (GetActiveWindow() == handle()) Lview.focus();
    Lview_ItemClick();
    scroller.refresh();  // more rows than it counts are refused, and everything else stands
}

// ---- The list and its menu --------------------------------------------------------------------

void frmhladanie::Lview_ItemClick() {
    lblbar.setText(Lview.selectedKey());
    scroller.followSelection();
}

void frmhladanie::onAccept() {
    if (Lview.hasFocus()) prehrat_Click();
}

void frmhladanie::showMenu(Point screen) {
    const std::wstring key = Lview.selectedKey();
    if (key.empty()) return;
    menu1.setEnabled(L"upravit_playlist", MultiMedialny::isPlaylistName(key));
    menu1.show(*this, screen);
}

void frmhladanie::prehrat_Click() {
    const std::wstring key = Lview.selectedKey();
    if (!key.empty()) links_.play(key);
}

void frmhladanie::sortBy(SortOrder order) {
    result.sort(order);
    if (Lview.count() == 0) return;
    Lview.select(Lview.firstVisible());
    Lview_ItemClick();
}

void frmhladanie::uloz_playlist_Click() {
    if (result.isEmpty()) return;
    const std::wstring target = Cdialog::ShowSave(
        *this,
        {.title = L"Uložiť ako playlist...", .filter = kExportFilter, .folder = lbladresar.text()});
    if (target.empty()) return;
    const auto question = result.exportQuestion();
    const int answer = question ? ask(*question) : 0;
    const auto lines = result.exportLines(answer);
    if (!lines || isClosing()) return;
    const Busy busy(*this);
    const auto written = askDisk(LoopHooks{yieldToEvents, [this] { return isGivenUp(); }},
                                 [target, content = playlistBytes(*lines, toAnsi)] {
                                     FileSystemObject::writeWhole(target, content);
                                     return true;
                                 });
    if (written && !isClosing())
        ask(L"Hotovo", L"Playlist '" + target + L"' bol vytvorený.", L"Jasné...");
}

Size frmhladanie::arrange(int stripBottom) {
    const int margin = scaled(kMargin), line = Skin::lineHeight(dpi());
    const Size size = clientSize();
    const int width = size.width - 2 * margin;
    int top = stripBottom + scaled(4);
    lbladresar.setBounds({margin, top, width, line});
    top += line;
    const int caption = Label3.measured().width;
    Label3.setBounds({margin, top, caption, line});
    lblpočet.setBounds({margin + caption, top, width - caption, line});
    top += line + scaled(4);
    const int bar = size.height - margin - line;
    scroller.place({margin, top, width, bar - scaled(4) - top});
    lblbar.setBounds({margin, bar, width, line});
    panel.place();
    return size;
}

}  // namespace tunovka
