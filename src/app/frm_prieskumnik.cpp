#include "app/frm_prieskumnik.h"

#include <algorithm>

#include "app/frm_o_programe.h"
#include "core/disk_questions.h"
#include "core/loop.h"
#include "core/text.h"
#include "editor/frm_plejlist.h"
#include "files/frm_info.h"
#include "search/frm_hladanie.h"
#include "ui/frm_box.h"
#include "ui/painting.h"

namespace tunovka {

// Sizes in 96ths of an inch.
constexpr Size kSize{900, 620};
constexpr Size kMinimum{620, 400};
constexpr int kMargin = 8;
constexpr int kSplitter = 8;
constexpr int kDriveHeight = 21;  // until the list is there
constexpr int kLeast = 7;         // how near the boundary comes to either side: 100 twips

constexpr wchar_t kEditors[] = L"vrtilkofrm";

frmPrieskumnik::frmPrieskumnik()
    : Form({.name = L"frmPrieskumnik",
            .title = L"Tunovka",
            .size = kSize,
            .minimum = kMinimum,
            .strip = L"Zahlavie",
            .closer = L"Ikoniec",
            .minimizer = L"Iminim"}),
      LblBar({.name = L"LblBar", .parent = this, .format = DT_PATH_ELLIPSIS, .status = true}),
      folders(*this, LblBar, txtPath,
              [this](const std::wstring& folder) { contents.ListFolderContents(folder); }),
      contents(*this, txtPath),
      splitter(*this),
      player(*this, {.selectedPath = [this]() -> std::optional<std::wstring> {
                         if (contents.Tview.selectedKey().empty()) return std::nullopt;
                         return contents.selectedPath();
                     },
                     .playElsewhere = [this] { playing.prehraťvprog_Click(); }}),
      prehrat(contentsMenu()),
      menuprestrom(folderMenu()),
      tri(titleMenu()),
      files({.form = *this,
             .strom = folders.strom,
             .Tview = contents.Tview,
             .txtPath = txtPath,
             .txtsubor = txtsubor,
             .txtodkaz = txtodkaz,
             .prehrat = prehrat,
             .menuprestrom = menuprestrom,
             .selectedPath = [this] { return contents.selectedPath(); },
             .closeFile = [this](const std::wstring& path) { player.release(path); },
             .renamed = [this](const std::wstring& key,
                               const std::wstring& name) { fileRenamed(key, name); }}),
      playing(prehrat, contents, player) {
    bindHandlers();
}

void frmPrieskumnik::bindHandlers() {
    txtodkaz.onChange = [this] { txtodkaz_Change(); };
    strip().onMouseUp = [this](MouseButton button, Point at) {
        if (button == MouseButton::Right) tri.show(*this, strip().toScreen(at));
    };
    splitter.onMoved = [this](int left) {
        const int width = clientSize().width - 2 * scaled(kMargin) - scaled(kSplitter);
        if (width > 0) leftShare_ = MulDiv(left - scaled(kMargin), 1000, width);
        layout();
    };

    folders.strom.onContextMenu = [this](Point screen) {
        menuprestrom.setEnabled(L"strom_vloz_subor", !txtsubor.text().empty() && !isBusy());
        menuprestrom.show(*this, screen);
    };

    TreeView& Tview = contents.Tview;
    Tview.onClick = [this](const std::wstring&) { selectionChanged(); };
    Tview.onSelectionByKey = [this] { selectionChanged(); };
    Tview.onContextMenu = [this](Point screen) {
        selectionChanged();
        prehrat.show(*this, screen);
    };
    Tview.onDoubleClick = [this] { Tview_KeyDown(VK_RETURN); };
    Tview.onBeginDrag = [this](const std::wstring& key) {
        selectionChanged();  // the release that would tell it belongs to the drag
        const std::wstring path = contents.selectedPathForPlaylists();
        if (!path.empty()) dragText(path, {.source = L"Tview", .key = key});
        return !path.empty();
    };
    Tview.onKeyDown = [this](WORD key) { return Tview_KeyDown(key); };

    tri.onClick(L"miminalizovat") = [this] { minimize(); };
    tri.onClick(L"zavri") = [this] { unload(); };
    tri.onClick(L"o_programe") = [this] { Forms::load<frmOprograme>(handle()).showModal(); };
    prehrat.onClick(L"info_o_subore") = [this] { info_o_subore_Click(); };
    prehrat.onClick(L"editovat_playlist") = [this] {
        const std::wstring path = contents.selectedPathForPlaylists();
        if (!path.empty()) openEditor(path);
    };
    menuprestrom.onClick(L"prehladaj_adresar") = [this] {
        const std::wstring folder = folders.selectedFolder();
        if (folder.empty()) return;
        txtPrehladavaj.setText(folder);
        frmhladanie::open(*this);
    };
    menuprestrom.onClick(L"novy_plalist") = [this] { openNewEditor(); };
}

void frmPrieskumnik::load() {
    const Depth alive(this);  // it may be closed meanwhile
    show();
    // A first look needs the frame alone; the window answers between the other parts.
    for (yieldNow(); !isClosing() && parts_ < 1 + std::ssize(treePlaces_); yieldNow()) {
        ++parts_;
        layout();
        if (folders.Drive1.handle()) layout();  // the drive list has its height now
    }
    if (isClosing()) return;
    prepareTrees();
    folders.chooseStartDrive();
    playing.findPlayers();
}

bool frmPrieskumnik::Tview_KeyDown(WORD key) {
    if (contents.Tview.selectedKey().empty()) return false;
    switch (key) {
        case VK_RETURN:
            playing.PlaySelected(kHere);
            return true;
        case VK_DELETE:  // takes an entry's file too, which the menu refuses
            files.removeSelected();
            return true;
        case VK_F2:
            selectionChanged();
            prehrat.choose(L"premenovat_subor");
            return true;
        default:
            return false;
    }
}

void frmPrieskumnik::info_o_subore_Click() {
    const std::wstring path = contents.selectedPath();
    if (!path.empty()) return showInformation(path);
    const std::wstring why = contents.whyNoFile(contents.Tview.selectedKey(), L"");
    why.empty() ? showMissingFile() : tellWhy(why);
}

void frmPrieskumnik::txtodkaz_Change() {
    const std::wstring command = txtodkaz.text();
    if (command.empty()) return;
    txtodkaz.setText(L"");
    if (command == kRefreshCommand) {
        refreshFolder();
    } else if (const auto path = pathToPlay(command)) {
        const std::wstring file = fileOnDisk(*path);
        if (!file.empty()) player.play(file);
    }
}

void frmPrieskumnik::refreshFolder() {
    const std::wstring folder = folders.selectedFolder();
    if (!folder.empty()) contents.ListFolderContents(folder);
}

void frmPrieskumnik::fileRenamed(const std::wstring& key, const std::wstring& name) {
    if (contents.renameFile(key, name))
        selectionChanged();
    else
        refreshFolder();
}

// What the menus offer for the selected node, and the status line.
void frmPrieskumnik::selectionChanged() {
    const std::wstring key = contents.Tview.selectedKey();
    if (key.empty()) return;
    const std::wstring path = contents.PathFromNodeKey(key);
    LblBar.setText(path.empty() ? contents.whyNoFile(key, L"Odkaz je na neexistujúci súbor")
                                : path);
    prehrat.setEnabled(L"ponuka_prehrať", !path.empty());
    prehrat.setEnabled(L"editovat_playlist", MultiMedialny::isPlaylistName(lowerCased(path)));
    // Only the key's first letters are tested: a file such as plavba.mp3 counts as an entry too.
    prehrat.setEnabled(L"operacie_so_suborom", !key.starts_with(L"pl") && !isBusy());
    prehrat.setEnabled(L"vlozit_subor", !txtsubor.text().empty());
}

void frmPrieskumnik::openEditor(const std::wstring& command) {
    frmplejlist::open(*this, command);
}

void frmPrieskumnik::showInformation(const std::wstring& command) {
    frminfo& window = Forms::load<frminfo>(activeForm());
    window.txtodkaz.setText(command);
    window.showModal();
}

std::optional<LRESULT> frmPrieskumnik::onMessage(UINT message, WPARAM wparam, LPARAM lparam) {
    // The tree takes no input while it fills: its window is asked for the pointer over it.
    if (message == WM_SETCURSOR && folders.showHourglass()) return TRUE;
    return Form::onMessage(message, wparam, lparam);
}

bool frmPrieskumnik::onShortcut(WORD key) {
    if (key != VK_F5) return false;
    refresh();
    return true;
}

void frmPrieskumnik::onMenuKey() {
    tri.show(*this, strip().toScreen({scaled(kMargin), strip().clientSize().height}));
}

bool frmPrieskumnik::queryUnload() {
    return Forms::unloadTagged(kEditors);
}

void frmPrieskumnik::onUnload() {
    player.Timer1.setInterval(0);
    player.mp.release();
    StopRequested = -1;
    Forms::unloadAll();
}

void frmPrieskumnik::prepareTrees() {
    HWND before = HWND_TOP;
    for (Window* control : std::initializer_list<Window*>{&folders.Drive1, &folders.strom,
                                                          &splitter.Medzera, &contents.Tview}) {
        control->setTabPlace(before);
        before = control->handle();
    }
    contents.Tview.focus();
}

Size frmPrieskumnik::arrange(int stripBottom) {
    const int margin = scaled(kMargin);
    const Size size = clientSize();
    const int top = stripBottom + margin;
    const int panel = PlayerPanel::panelHeight(*this);
    const Rect bottom{margin, size.height - margin - panel, size.width - 2 * margin, panel};
    const int status = Skin::lineHeight(dpi());
    const int treesBottom = bottom.y - status - scaled(6);

    const int gap = scaled(kSplitter);
    const int width = size.width - 2 * margin - gap;
    const int least = margin + scaled(kLeast);
    const int most = std::max(least, size.width - scaled(kLeast));
    const int boundary = std::clamp(margin + MulDiv(width, leftShare_, 1000), least, most);
    const int left = boundary - margin;
    // As high as its font makes it: more than that would show the text above the middle.
    const int driveHeight =
        folders.Drive1.handle() ? folders.Drive1.bounds().height : scaled(kDriveHeight);
    const int stromTop = top + driveHeight + scaled(4);
    treePlaces_ = {
        {{&folders.strom, {margin, stromTop, left, treesBottom - stromTop}},
         {&contents.Tview, {boundary + gap, top, std::max(0, width - left), treesBottom - top}},
         {&folders.Drive1, {margin, top, left, driveHeight}}}};
    if (parts_ == 0) return size;
    player.layout(bottom);
    LblBar.setBounds({margin, bottom.y - status - scaled(4), bottom.width, status});
    splitter.setBounds({boundary, top, gap, treesBottom - top}, least, most);
    for (int tree = 0; tree < parts_ - 1; ++tree)
        treePlaces_[tree].first->setBounds(treePlaces_[tree].second);
    return size;
}

void frmPrieskumnik::onPaintGround(HDC dc) const {
    // Until the trees come and cover them their places are not left empty.
    for (const auto& [tree, place] : treePlaces_) fillRect(dc, toRECT(place), colors().field);
}

}  // namespace tunovka
