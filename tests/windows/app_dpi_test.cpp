// Every window of the program, moved between screens of other dots per inch: nothing is cut, fonts
// and pictures follow, and back at the first screen it is as it was.
#include <gtest/gtest.h>

#include <map>
#include <set>

#include "app/frm_o_programe.h"
#include "app/frm_prieskumnik.h"
#include "files/frm_info.h"
#include "files/frm_kopirovanie.h"
#include "search/frm_hladanie.h"
#include "support/editor_stage.h"
#include "ui/frm_box.h"
#include "ui/frm_vstup.h"
#include "ui/painting.h"
#include "ui/read_only_text.h"
#include "ui/tree_view.h"

namespace tunovka {
namespace {

// Labels that may end in an ellipsis, and the one that scrolls.
const std::set<std::wstring> kMayBeCut{L"LblBar",     L"lblbar",   L"lbladresar", L"lblplejlist",
                                       L"lblpriebeh", L"lblsubor", L"lblnapis"};

class Dpi : public EditorStage {
  protected:
    using Places = std::map<HWND, Rect>;

    void expectFollows(Form& form) {
        SCOPED_TRACE(testing::PrintToString(form.name()));
        form.show();
        const Places before = places(form);
        EXPECT_GT(before.size(), 2u);
        for (const int dpi : {120, 144, 192, 96, form.dpi()}) {
            change(form, dpi);
            SCOPED_TRACE(std::to_string(dpi) + " dots per inch");
            for (const auto& [handle, place] : places(form))
                if (Window* window = windowOf(handle)) expectWhole(*window, dpi);
        }
        for (const auto& [handle, place] : places(form)) {
            const Window* const window = windowOf(handle);
            if (window && window->name() == L"Iposuv") continue;  // goes on from its last height
            EXPECT_TRUE(before.contains(handle) && before.at(handle) == place)
                << testing::PrintToString(window ? window->name() : L"a part of a control") << ": "
                << place.x << " " << place.y << " " << place.width << " " << place.height;
        }
    }

  private:
    // What the system does when a form comes to lie on a screen of that dpi.
    static void change(Form& form, int dpi) {
        const Rect now = form.bounds();
        const int before = form.dpi();
        RECT area =
            toRECT({now.x, now.y, MulDiv(now.width, dpi, before), MulDiv(now.height, dpi, before)});
        SendMessageW(form.handle(), WM_DPICHANGED, MAKEWPARAM(dpi, dpi),
                     reinterpret_cast<LPARAM>(&area));
    }

    // The visible controls and where they are in their parents; all lie inside.
    static Places places(const Form& form) {
        Places found;
        for (const HWND handle : WindowList::below(form.handle())) {
            if (!IsWindowVisible(handle)) continue;
            const HWND parent = GetParent(handle);
            RECT own{}, inside{};
            GetWindowRect(handle, &own);
            MapWindowPoints(nullptr, parent, reinterpret_cast<POINT*>(&own), 2);
            GetClientRect(parent, &inside);
            const Window* const window = windowOf(handle);
            EXPECT_TRUE(own.left >= 0 && own.top >= 0 && own.right <= inside.right &&
                        own.bottom <= inside.bottom)
                << testing::PrintToString(window ? window->name() : L"a part of a control");
            found[handle] = {static_cast<int>(own.left), static_cast<int>(own.top),
                             static_cast<int>(own.right - own.left),
                             static_cast<int>(own.bottom - own.top)};
        }
        return found;
    }

    static void expectFits(Size text, Size room) {
        EXPECT_LE(text.width, room.width);
        EXPECT_LE(text.height, room.height);
    }

    static void expectWhole(Window& window, int dpi) {
        SCOPED_TRACE(testing::PrintToString(window.name()) + ": " +
                     testing::PrintToString(window.text()));
        EXPECT_EQ(window.dpi(), dpi);
        const Size size = window.clientSize();
        if (const auto* label = dynamic_cast<Label*>(&window)) {
            if (label->text().empty()) return;
            // A text that does not fit would take another line.
            if (kMayBeCut.contains(label->name()))
                expectFits({0, label->measured().height}, size);
            else
                expectFits(label->measured(size.width), size);
        } else if (const auto* image = dynamic_cast<Image*>(&window)) {
            if (image->isCaptioned())
                expectFits(measureText(image->text(), Skin::font(dpi)), size);
            else
                EXPECT_EQ(size, image->naturalSize());
        } else if (const auto* strip = dynamic_cast<TitleStrip*>(&window)) {
            int right = size.width;
            for (HWND one = GetWindow(strip->handle(), GW_CHILD); one;
                 one = GetWindow(one, GW_HWNDNEXT))
                right = std::min(right, windowOf(one)->bounds().x);
            expectFits(measureText(strip->text(), Skin::font(dpi, Skin::Font::Bold)),
                       {right - window.scaled(4), size.height});
        } else if (!dynamic_cast<PictureBox*>(&window)) {
            expectFollowsItself(window, dpi);
        }
    }

    // A control of the system has fonts and rows of its own.
    static void expectFollowsItself(const Window& window, int dpi) {
        const HFONT font = Skin::font(dpi);
        const int line = Skin::fontHeight(dpi);
        const auto ask = [&](UINT message) { return SendMessageW(window.handle(), message, 0, 0); };
        EXPECT_EQ(reinterpret_cast<HFONT>(ask(WM_GETFONT)), font);
        EXPECT_LE(line, window.clientSize().height);
        if (dynamic_cast<const TreeView*>(&window)) {
            EXPECT_LE(line, ask(TVM_GETITEMHEIGHT));
        } else if (const auto* list = dynamic_cast<const ListView*>(&window)) {
            EXPECT_LE(std::max(line, list->scaled(16)), list->rowHeight());
        } else if (dynamic_cast<const ReadOnlyText*>(&window) &&
                   !(GetWindowLongW(window.handle(), GWL_STYLE) & ES_MULTILINE)) {
            expectFits(measureText(window.text(), font), window.clientSize());
        }
    }
};

TEST_F(Dpi, TheExplorerFollows) {
    frmPrieskumnik explorer;
    explorer.load();
    explorer.contents.ListFolderContents(folder.path());
    explorer.player.lblušielčas.setText(L"120:34 min");
    explorer.player.lblčas.setText(L"120:59 min");
    expectFollows(explorer);
    explorer.unload();
}

TEST_F(Dpi, AnEditorFollows) {
    std::wstring lines;
    for (int i = 0; i < 40; ++i) lines += L"a.mp3\r\n";  // enough for the picture scroll bar
    open(lines);
    expectFollows(*window);
}

TEST_F(Dpi, TheSearchWindowFollowsWithItsPanelAndWithItsResult) {
    frmhladanie search(program);
    search.lblpočet.setText(L" 32 767 - prerušené, z toho hudobné:  32 767");
    std::vector<std::wstring> paths;
    for (int i = 0; i < 40; ++i) paths.push_back(std::to_wstring(i) + L"\\á.mp3");
    search.result.list(std::move(paths));
    search.show();
    search.panel.begin();
    search.panel.progress(L"E:\\Ľudové\\", 1'234'567);
    expectFollows(search);
    search.panel.end();
    search.Lview.setVisible(true);
    search.scroller.refresh();
    expectFollows(search);
}

TEST_F(Dpi, InformationAndAboutFollow) {
    const std::wstring song = folder.file(L"Čerešňový sad.mp3", std::string(300, 'x'));
    SetFileAttributesW(song.c_str(), FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_ARCHIVE);
    for (const std::wstring& request : {song, folder / L"nie je.mp3"}) {
        frminfo info(nullptr);
        info.txtodkaz.setText(request);
        info.Timer1.setInterval(0);  // the warning stays
        expectFollows(info);
    }
    frmOprograme about(nullptr);
    expectFollows(about);
}

TEST_F(Dpi, BoxesAndDialogsFollow) {
    const std::wstring question =
        L"Chceš použiť v playliste relatívne odkazy na súbory vzhľadom k umiestneniu playlistu ?";
    for (const wchar_t* buttons : {L"Beriem na vedomie", L"ÁNO;NIE;STORNO"}) {
        frmBox box(nullptr, L"Relatívne odkazy", question, buttons);
        expectFollows(box);
    }
    std::wstring lines;
    for (int i = 0; i < 200; ++i) lines += question + L"\n";
    frmBox tall(nullptr, L"CHYBA", lines, L"Rozumiem ...");
    expectFollows(tall);
    frmVstup input(*window, {.title = L"Premenovať súbor",
                             .prompt = L"Napíš nový názov súboru",
                             .answer = L"Čerešňový sad.mp3",
                             .selected = 13});
    expectFollows(input);
    frmkopirovanie copying(*window, L"Čerešňový sad.mp3");
    copying.showProgress(1, 1);
    expectFollows(copying);
}

}  // namespace
}  // namespace tunovka
