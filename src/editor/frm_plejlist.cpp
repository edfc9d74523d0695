#include "editor/frm_plejlist.h"

#include <algorithm>

#include "core/loop.h"
#include "core/text.h"
#include "editor/texts.h"
#include "ui/box.h"
#include "ui/chrome.h"
#include "ui/save_dialog.h"

namespace tunovka {
namespace {

constexpr wchar_t kTag[] = L"vrtilkofrmplejlist";

// Sizes in 96ths of an inch.
constexpr Size kSize{480, 460};
constexpr Size kMinimum{320, 240};
constexpr int kMargin = 8;
constexpr int kLine = 20;     // a line of text
constexpr int kStagger = 26;  // how far each further window lies from the one before
constexpr int kStaggered = 8;

int nextWindowNumber() {
    const auto forms = Forms::loaded();
    return static_cast<int>(std::ranges::count_if(
        forms, [](const Form* form) { return like(form->tag, std::wstring(kTag) + L"*"); }));
}

PopupMenu editorMenu() {
    return PopupMenu({
        {.name = L"info_o_subore", .caption = L"info o súbore"},
        {.name = L"ulozit_ako_plejlist", .caption = L"uložiť ako playlist "},
        {.name = L"prehrat", .caption = L"prehrať"},
        {.name = L"odstranit",
         .caption = L"odstrániť",
         .items =
             {
                 {.name = L"odstranit_polozku", .caption = L"aktuálnu položku (Del)"},
                 {.name = L"odstranit_neplatne_odkazy", .caption = L"neplatné odkazy"},
                 {.name = L"odstranit_duplicitu", .caption = L"duplicitné položky"},
             }},
        {.name = L"zoradit",
         .caption = L"zoradiť",
         .items =
             {
                 {.name = L"zoradit_vzostupne", .caption = L"vzostupne (A-Z)"},
                 {.name = L"zoradit_zostupne", .caption = L"zostupne (Z - A)"},
                 {.name = L"neradit", .caption = L"pôvodne poriade"},
             }},
    });
}

}  // namespace

frmplejlist::frmplejlist(ProgramLinks& links)
    : Form(FormArgs{.name = L"frmplejlist",
                    .caption = L"Editor playlistov",
                    .size = kSize,
                    .minimum = kMinimum,
                    .resizable = true}),
      PicZahlavie(L"PicZahlavie", L" Editor playlistov", *this),
      IZavri(closePicture(L"IZavri", PicZahlavie)),
      menu1(editorMenu()),
      editor(*this, links),
      drops_(editor.view.Lview,
             {.over = [this](Point point) { return dragOver(point); },
              .leave = [this] { editor.view.Lview.setDropHighlight(std::nullopt); },
              .drop =
                  [this](const std::wstring& text, Point point, const DragState& drag) {
                      Lview_Drop(text, editor.view.Lview.itemAt(point), drag);
                  }}) {
    RozneApi::ShowTitleBar(*this, false);
    const int number = nextWindowNumber();
    PicZahlavie.setText(editorTitle(number));
    setText(trimBlanks(editorTitle(number)));
    tag = kTag + std::to_wstring(number);

    const Rect place = bounds();
    const int aside = scaled(kStagger) * (number % kStaggered);
    setBounds({place.x + aside, place.y + aside, place.width, place.height});

    txtodkaz.onChange = [this] { txtodkaz_Change(); };
    IZavri.onRelease = [this](MouseButton button) {
        if (button == MouseButton::Left) unload();
    };
    bindMenu();
    bindList();
    layout();  // the list is filled before it is shown: its height is needed then
}

void frmplejlist::bindMenu() {
    const auto bind = [this](const wchar_t* name, void (*command)(Editor&)) {
        menu1.onClick(name) = [this, command] { run(command); };
    };
    bind(L"ulozit_ako_plejlist", saveAs);
    bind(L"odstranit_polozku", removeCurrent);
    bind(L"odstranit_neplatne_odkazy", removeInvalidLinks);
    bind(L"odstranit_duplicitu", removeDuplicates);
    bind(L"zoradit_vzostupne", [](Editor& own) { sortRows(own, SortOrder::Ascending); });
    bind(L"zoradit_zostupne", [](Editor& own) { sortRows(own, SortOrder::Descending); });
    bind(L"neradit", restoreLoadOrder);
    menu1.onClick(L"prehrat") = [this] { prehrat(); };
    menu1.onClick(L"info_o_subore") = [this] { info_o_subore(); };
}

void frmplejlist::bindList() {
    ListView& Lview = editor.view.Lview;
    Lview.onMouseDown = [this](MouseButton, Point at) {
        if (editor.view.Lview.itemAt(at)) editor.view.itemClicked();
    };
    Lview.onSelectionByKey = [this] { editor.view.itemClicked(); };
    Lview.onMouseUp = [this](MouseButton button, Point at) {
        if (button == MouseButton::Right) showMenu(editor.view.Lview.toScreen(at));
    };
    Lview.onContextMenu = [this](Point screen) { showMenu(screen); };
    Lview.onDoubleClick = [this] { prehrat(); };
    Lview.onKeyDown = [this](WORD key) {
        if (key == VK_DELETE) run(removeCurrent);
        return key == VK_DELETE;
    };
    Lview.onBeginDrag = [this](std::size_t) { Lview_BeginDrag(); };
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
        own.view.lblplejlist.setText(command);
        own.document.clear(command);
        yieldNow();
        if (isClosing()) return;
        if (!asksForNewPlaylist(command)) return loadPlaylistFile(own, command);
        own.document.openNew(command);
    });
}

void frmplejlist::open(ProgramLinks& links, const std::wstring& command) {
    auto& opened = Forms::load<frmplejlist>(links);
    const Depth alive(&opened);
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

bool frmplejlist::dragOver(Point point) {
    if (isBusy()) return false;
    ListView& Lview = editor.view.Lview;
    Lview.scrollNearEdge(point);
    Lview.setDropHighlight(Lview.itemAt(point));
    return true;
}

void frmplejlist::Lview_Drop(const std::wstring& text, std::optional<std::size_t> target,
                             const DragState& drag) {
    editor.view.Lview.focus();  // brings the window to the front, whose questions follow
    run([&](Editor& own) { dropText(own, text, target, drag); });
}

void frmplejlist::Lview_BeginDrag() {
    const std::wstring key = editor.view.Lview.selectedKey();
    const std::wstring path = editor.view.selectedPath();
    if (!path.empty()) dragText(path, {.source = L"Lview", .key = key, .path = path});
}

void frmplejlist::prepareMenu() {
    const auto selected = editor.view.Lview.selected();
    const std::size_t rows = editor.document.count();
    const bool isThere = selected && !editor.document.rows()[*selected].missing;
    menu1.setEnabled(L"info_o_subore", isThere);
    menu1.setEnabled(L"prehrat", isThere);
    menu1.setEnabled(L"odstranit_polozku", selected.has_value());
    menu1.setEnabled(L"zoradit", rows >= 2);
    menu1.setEnabled(L"odstranit_duplicitu", rows >= 2);
    menu1.setEnabled(L"ulozit_ako_plejlist", editor.document.mayBeSaved());
}

void frmplejlist::showMenu(Point screen) {
    if (isBusy()) return;  // every entry works on what the running command walks over
    prepareMenu();
    menu1.show(*this, screen);
}

void frmplejlist::prehrat() {
    if (editor.view.Lview.selected())
        editor.links.tellExplorer(L"hraj:" + editor.view.selectedPath());
}

void frmplejlist::info_o_subore() {
    if (!editor.view.Lview.selected()) return;
    const std::wstring path = editor.view.selectedPath();
    editor.links.showInformation(path.empty() ? L"chyba" : path);
}

// "ÁNO" saves nothing: it closes like "NIE", after a dialog whose answer is not used when the
// playlist has never been saved. The user's guide says so.
bool frmplejlist::queryUnload() {
    if (!editor.document.changed()) return true;
    if (asking_) return false;
    asking_ = true;
    show();  // the question lies over the window that it is about
    const std::int16_t answer = ask(saveChangesQuestion());
    if (answer == 1 && editor.document.playlistPath() == kNewPlaylist) {
        askSavePath(*this, {.title = std::wstring(kSaveTitle),
                            .filter = std::wstring(kCloseSaveFilter),
                            .folder = editor.links.shownFolder()});
    }
    asking_ = false;
    return answer == 1 || answer == 2;
}

void frmplejlist::onAccept() {
    if (editor.view.Lview.hasFocus()) prehrat();
}

void frmplejlist::onLayout() {
    const int margin = scaled(kMargin);
    const int line = scaled(kLine);
    const Size size = clientSize();
    const int width = size.width - 2 * margin;
    const int top = layoutTitle(*this, PicZahlavie, &IZavri, nullptr) + scaled(4);
    EditorView& view = editor.view;
    view.lblplejlist.setBounds({margin, top, width, line});
    view.lblpočet.setBounds({margin, top + line, width, line});
    const int listTop = top + 2 * line + scaled(4);
    const int listBottom = size.height - margin - line;
    view.scroller.place({margin, listTop, width, listBottom - listTop});
    view.lblbar.setBounds({margin, listBottom + scaled(4), width, line});
}

void frmplejlist::onPaintGround(HDC dc, const RECT& area) const {
    paintRim(dc, area);
}

}  // namespace tunovka
