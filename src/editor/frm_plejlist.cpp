#include "editor/frm_plejlist.h"

#include <algorithm>
#include <memory>

#include "core/loop.h"
#include "core/text.h"
#include "ui/frm_box.h"
#include "ui/system_dialogs.h"

namespace tunovka {
namespace {

constexpr wchar_t kTag[] = L"vrtilkofrmplejlist";

// Sizes in 96ths of an inch.
constexpr Size kSize{480, 460};
constexpr unsigned kShownAfter = 300;  // ms that reading may take without a window
constexpr Size kMinimum{320, 240};
constexpr int kMargin = 8;

int nextWindowNumber() {
    const auto forms = Forms::loaded();
    return static_cast<int>(
        std::ranges::count_if(forms, [](const Form* form) { return form->tag.starts_with(kTag); }));
}

PopupMenu editorMenu() {
    return PopupMenu(
        {{.name = L"info_o_subore", .caption = L"info o súbore"},
         {.name = L"ulozit_ako_plejlist", .caption = L"uložiť ako playlist "},
         {.name = L"prehrat", .caption = L"prehrať"},
         {.name = L"odstranit",
          .caption = L"odstrániť",
          .items = {{.name = L"odstranit_polozku", .caption = L"aktuálnu položku (Del)"},
                    {.name = L"odstranit_neplatne_odkazy", .caption = L"neplatné odkazy"},
                    {.name = L"odstranit_duplicitu", .caption = L"duplicitné položky"}}},
         {.name = L"zoradit",
          .caption = L"zoradiť",
          .items = {{.name = L"zoradit_vzostupne", .caption = L"vzostupne (A-Z)"},
                    {.name = L"zoradit_zostupne", .caption = L"zostupne (Z - A)"},
                    {.name = L"neradit", .caption = L"pôvodne poriade"}}}});
}

}  // namespace

frmplejlist::frmplejlist(ProgramLinks& links)
    : Form({.name = L"frmplejlist",
            .title = L"Editor playlistov",
            .size = kSize,
            .minimum = kMinimum}),
      editor(*this, links),
      lblpočet({.name = L"lblpočet", .caption = L"Počet  odkazov v playliste:", .parent = this}),
      lblplejlist({.name = L"lblplejlist", .parent = this, .format = DT_PATH_ELLIPSIS}),
      lblbar({.name = L"lblbar", .parent = this, .format = DT_PATH_ELLIPSIS, .status = true}),
      Lview({.name = L"Lview", .text = L"Položky playlistu", .parent = this}, editor.document),
      scroller(*this, Lview, rowsPerPageCut),
      menu1(editorMenu()),
      links_(links),
      drops_(Lview,
             {.over = [this](Point at) { return Lview_OLEDragOver(at); },
              .leave = [this] { Lview.setDropHighlight(std::nullopt); },
              .drop = [this](const std::wstring& text, Point,
                             const DragState& drag) { Lview_OLEDragDrop(text, dropRow_, drag); }}) {
    const int number = nextWindowNumber();
    const std::wstring title = L"Editor playlistov " + decimal(number);
    strip().setText(L" " + title);
    setText(title);
    tag = kTag + decimal(number);
    bindHandlers();
    placeBesideOthers();
    layout();  // the list is filled before it is shown: its height is needed then
}

void frmplejlist::bindHandlers() {
    txtodkaz.onChange = [this] { txtodkaz_Change(); };
    editor.onSelect = [this](std::size_t row) { select(row); };

    Lview.onMouseDown = [this](MouseButton, Point at) { Lview_MouseDown(at); };
    Lview.onSelectionByKey = [this] { Lview_ItemClick(); };
    Lview.onDoubleClick = [this] { prehrat_Click(); };
    Lview.onKeyDown = [this](WORD key) { return Lview_KeyDown(key); };
    Lview.onContextMenu = [this](Point screen) { showMenu(screen); };
    Lview.onBeginDrag = [this](std::size_t) { Lview_OLEStartDrag(); };
    Lview.onRowsChange = [this] { updateCountLabel(); };

    const auto bind = [this](const wchar_t* entry, const std::function<void(Editor&)>& command) {
        menu1.onClick(entry) = [this, command] { run(command); };
    };
    menu1.onClick(L"info_o_subore") = [this] { info_o_subore_Click(); };
    menu1.onClick(L"prehrat") = [this] { prehrat_Click(); };
    menu1.onClick(L"odstranit_polozku") = [this] { odstranit_polozku_Click(); };
    bind(L"ulozit_ako_plejlist", &Editor::saveAs);
    bind(L"odstranit_neplatne_odkazy", &Editor::removeInvalidLinks);
    bind(L"odstranit_duplicitu", &Editor::removeDuplicates);
    bind(L"zoradit_vzostupne", [](Editor& own) { own.sort(SortOrder::Ascending); });
    bind(L"zoradit_zostupne", [](Editor& own) { own.sort(SortOrder::Descending); });
    bind(L"neradit", &Editor::restoreLoadOrder);
}

void frmplejlist::open(ProgramLinks& links, const std::wstring& command) {
    auto& opened = Forms::load<frmplejlist>(links);
    const Depth alive(&opened);
    Timer late;  // a disk that takes its time is given up in the window
    late.onTick = [&] {
        late.setInterval(0);
        if (!opened.isClosing()) opened.show();
    };
    late.setInterval(kShownAfter);
    try {
        opened.txtodkaz.setText(command);
    } catch (...) {
        if (opened.editor.document.count() == 0)
            opened.unload();
        else
            opened.show();
        throw;
    }
    if (!opened.isClosing()) opened.show();
}

// Runs a command that changes the document or walks over it; refused while another one runs.
void frmplejlist::run(const std::function<void(Editor&)>& command) {
    if (isBusy() || isClosing()) return;
    const Busy busy(*this);
    command(editor);
}

void frmplejlist::txtodkaz_Change() {
    const std::wstring command = txtodkaz.text();
    if (command.empty()) return;
    run([&](Editor& own) {
        lblplejlist.setText(command);
        own.document.clear(command);
        yieldNow();
        if (isClosing()) return;
        asksForNewPlaylist(command) ? own.document.openNew(command) : own.loadPlaylistFile(command);
    });
}

// ---- The list ---------------------------------------------------------------------------------

void frmplejlist::select(std::size_t position) {
    if (position < Lview.count()) {
        Lview.select(position);
        Lview.ensureVisible(position);
    }
    Lview_ItemClick();
}

std::wstring frmplejlist::selectedPath() const {
    const auto position = Lview.selected();
    return position ? editor.pathOf(*position) : std::wstring();
}

void frmplejlist::updateCountLabel() {
    lblpočet.setText(L"Počet odkazov v playliste: " + decimal(Lview.count()));
    scroller.refresh();
}

void frmplejlist::Lview_ItemClick() {
    const auto position = Lview.selected();
    if (!position) return lblbar.setText(L"");
    lblbar.setText(editor.status(*position));
    scroller.followSelection();
}

void frmplejlist::Lview_MouseDown(Point at) {
    if (Lview.itemAt(at)) Lview_ItemClick();
}

bool frmplejlist::Lview_KeyDown(WORD key) {
    if (key == VK_DELETE) odstranit_polozku_Click();
    return key == VK_DELETE;
}

void frmplejlist::Lview_OLEStartDrag() {
    const std::wstring key = Lview.selectedKey(), path = selectedPath();
    if (!path.empty()) dragText(path, {.source = Lview.name(), .key = key, .path = path});
}

bool frmplejlist::Lview_OLEDragOver(Point at) {
    if (isBusy()) return false;
    Lview.scrollNearEdge(at);
    dropRow_ = Lview.itemAt(at);
    Lview.setDropHighlight(dropRow_);
    return true;
}

void frmplejlist::Lview_OLEDragDrop(const std::wstring& text, std::optional<std::size_t> target,
                                    const DragState& drag) {
    Lview.focus();  // brings the window to the front, whose questions follow
    run([&](Editor& own) { own.drop(text, target, drag); });
}

// ---- The menu ---------------------------------------------------------------------------------

void frmplejlist::showMenu(Point screen) {
    if (isBusy()) return;  // every entry works on what the running command walks over
    const auto selected = Lview.selected();
    const PlaylistEntry none{};
    const PlaylistEntry& entry = selected ? editor.document.rows()[*selected] : none;
    const bool isThere = !entry.key.empty() && !entry.missing;
    menu1.setEnabled(L"info_o_subore", isThere);
    menu1.setEnabled(L"prehrat", isThere);
    menu1.setEnabled(L"odstranit_polozku", selected.has_value());
    menu1.setEnabled(L"zoradit", Lview.count() >= 2);
    menu1.setEnabled(L"odstranit_duplicitu", Lview.count() >= 2);
    menu1.setEnabled(L"ulozit_ako_plejlist", editor.document.mayBeSaved());
    menu1.show(*this, screen);
}

// The selected row's file, "" when it is missing; nullopt where there is nothing to play or to tell
// of: no key, as in the row that says that nothing was found, or a file that may not be looked at,
// which is told.
std::optional<std::wstring> frmplejlist::fileToUse() const {
    if (Lview.selectedKey().empty()) return std::nullopt;
    const std::wstring path = selectedPath();
    const std::wstring refusal =
        path.empty() ? editor.whyNoFile(*Lview.selected(), L"") : std::wstring();
    if (refusal.empty()) return path;
    tellWhy(refusal);
    return std::nullopt;
}

void frmplejlist::prehrat_Click() {
    if (const auto path = fileToUse()) links_.play(*path);
}

void frmplejlist::info_o_subore_Click() {
    const auto path = fileToUse();
    if (!path) return;
    path->empty() ? links_.showMissingFile() : links_.showInformation(*path);
}

void frmplejlist::odstranit_polozku_Click() {
    const auto position = Lview.selected();
    if (position) run([&](Editor& own) { own.removeAt(*position); });
}

// ---- Closing ----------------------------------------------------------------------------------

// "ÁNO" saves nothing: it closes like "NIE", after a dialog whose answer is not used when the
// playlist has never been saved. The user's guide says so.
bool frmplejlist::queryUnload() {
    if (!editor.document.changed()) return true;
    if (asking_) return false;
    asking_ = true;
    // Also when an answer ends in a failure: the window must still be able to close.
    const std::shared_ptr<void> asked(nullptr, [this](void*) { asking_ = false; });
    show();  // the question lies over the window that it is about
    const std::int16_t answer = ask(
        L"Uložiť zmeny ?", L"Pri úpravách playlistu došlo k zmenám, chceš playlist uložiť teraz ?",
        L"ÁNO;NIE;STORNO");
    if (answer == 1 && editor.document.playlistPath() == kNewPlaylist) {
        Cdialog::ShowSave(*this, {.title = L"Uložiť playlist",
                                  .filter = L"Playlist Winampu (*.m3u)|*.m3u|Textový súbor "
                                            L"(*.txt)|*.txt",
                                  .folder = links_.shownFolder()});
    }
    return answer == 1 || answer == 2;
}

std::wstring frmplejlist::sessionBlock() const {
    return editor.document.changed() ? L"Playlist má zmeny, ktoré nie sú uložené." : L"";
}

void frmplejlist::onAccept() {
    if (Lview.hasFocus()) prehrat_Click();
}

Size frmplejlist::arrange(int stripBottom) {
    const int margin = scaled(kMargin);
    const int line = Skin::lineHeight(dpi());
    const Size size = clientSize();
    const int width = size.width - 2 * margin;
    const int top = stripBottom + scaled(4);
    lblplejlist.setBounds({margin, top, width, line});
    lblpočet.setBounds({margin, top + line, width, line});
    const int listTop = top + 2 * line + scaled(4);
    const int listBottom = size.height - margin - line;
    scroller.place({margin, listTop, width, listBottom - listTop});
    lblbar.setBounds({margin, listBottom + scaled(4), width, line});
    return size;
}

}  // namespace tunovka
