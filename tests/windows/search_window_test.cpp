// The search window on real folders: scan, result list, commands, export.
#include <gtest/gtest.h>

#include "core/ansi.h"
#include "support/disk_faults.h"
#include "support/person.h"
#include "support/search_stage.h"
#include "ui/frm_box.h"

namespace tunovka {
namespace {

using Texts = std::vector<std::wstring>;

class Search : public testing::Test, protected SearchStage {
  protected:
    // Enough folders that a search looks at its messages more than once, with files from the start.
    static const ScratchFolder& large() {
        static std::unique_ptr<ScratchFolder> made;
        if (made) return *made;
        made = std::make_unique<ScratchFolder>();
        made->fill({L"a.mp3", L"b.mp3"});
        for (int i = 0; i < kFolders; ++i) {
            const std::wstring album = std::to_wstring(i) + L"\\";
            made->fill({album, album + L"a.mp3", album + L"b.txt"});
        }
        return *made;
    }
    Search() { installFailureNotice(); }

    void scan(const std::wstring& path) {
        choose(path);
        ASSERT_TRUE(runUntil([&] { return isDone(); }));
    }
    Texts listed() const {
        Texts texts;
        for (std::size_t i = 0; i < window->Lview.count(); ++i)
            texts.push_back(window->result.row(i).name);
        return texts;
    }
    // Does something once, inside the search's own look at the messages while it collects: when it
    // shows how far it is, the first folder is behind it.
    void duringCollecting(std::function<void()> action) {
        const auto collects = [this] {
            const Window* const progress = controlNamed(*window, L"lblpriebeh");
            return window->isBusy() && window->panel.Label1.text() == kCollecting && progress &&
                   !progress->text().empty();  // made with its first text
        };
        meanwhile_.emplace(collects, std::move(action));
    }
    // Runs the export: a name for the save dialog, then one answer for each box that follows. What
    // the boxes showed.
    Texts exported(const std::wstring& name, std::deque<int> answers) {
        person.seen.clear();
        person.answer(std::move(answers));
        person.saveAs({name});
        guarded([&] { window->menu1.choose(L"uloz_playlist"); });
        EXPECT_TRUE(runUntil([&] { return person.unanswered() == 0; }));
        Texts titles;
        for (const BoxRequest& box : person.seen) titles.push_back(box.title + L"|" + box.text);
        return titles;
    }

    static constexpr int kFolders = 300;
    static constexpr wchar_t kCollecting[] = L"Prebieha prehľadávanie adresára";
    ScratchFolder folder;
    Person person;

  private:
    std::optional<When> meanwhile_;
};

TEST_F(Search, ListsMusicAndPlaylistsLevelByLevel) {
    folder.fill({L"Ľudové\\", L"Ľudové\\č.wma", L"a.mp3", L"A2.MP3", L"l.asx"});
    scan(folder.path());
    EXPECT_EQ(listed(), (Texts{L"a.mp3", L"l.asx", L"č.wma"}));
    EXPECT_EQ(window->lblpočet.text(), L"  4, z toho hudobné:   3");
    EXPECT_TRUE(window->Lview.isVisible());
    EXPECT_FALSE(window->scroller.PicPosuv.isVisible());
    EXPECT_EQ(window->Lview.selected(), 0u);
    EXPECT_EQ(window->lblbar.text(), folder / L"a.mp3");
    EXPECT_EQ(window->result.row(2).picture, L"winamp4");
    EXPECT_TRUE(window->menu1.isEnabled(L"info_o_subore"));
    EXPECT_TRUE(window->menu1.isEnabled(L"uloz_playlist"));

    folder.file(L"new.mp3");
    choose(folder.path());  // to the front again: the same folder is not searched again
    letTimersTick();
    EXPECT_EQ(listed().size(), 3u);
}

TEST_F(Search, OneFileIsNoResultAndNothingKeptIsAPlaceholder) {
    folder.fill({L"one\\", L"one\\a.mp3", L"none\\", L"none\\a.txt", L"none\\b.MP3"});
    const auto expect = [&](const wchar_t* name, const wchar_t* count, const Texts& rows) {
        scan(folder / name);
        EXPECT_EQ(window->lblpočet.text(), count);
        EXPECT_EQ(listed(), rows);
        EXPECT_EQ(window->Lview.isVisible(), !rows.empty());
        EXPECT_FALSE(window->menu1.isEnabled(L"uloz_playlist"));
    };
    expect(L"one\\", L"  1", {});
    expect(L"missing\\", L"  0", {});
    expect(L"none\\", L"  2, z toho hudobné:   0", {L"neboli nájdené žiadne súbory"});
}

TEST_F(Search, StoppingKeepsWhatWasFound) {
    duringCollecting([&] {
        EXPECT_TRUE(window->panel.PicInfo.isVisible());
        EXPECT_FALSE(window->Lview.isVisible());
        const std::wstring found = control(*window, L"lblnajdene").text();
        EXPECT_TRUE(found.starts_with(L"nájdených súborov: ")) << testing::PrintToString(found);
        pressAndRelease(window->panel.Istop);
    });
    scan(large().path());
    EXPECT_NE(window->lblpočet.text().find(L" - prerušené, z toho hudobné: "), std::wstring::npos)
        << testing::PrintToString(window->lblpočet.text());
    EXPECT_GT(window->Lview.count(), 0u);
    EXPECT_LT(window->Lview.count(), static_cast<std::size_t>(kFolders));
    EXPECT_EQ(StopRequested, 0);
    EXPECT_TRUE(window->menu1.isEnabled(L"uloz_playlist"));
}

TEST_F(Search, AnotherFolderTakesOverFromTheRunningSearch) {
    const ScratchFolder other;
    other.fill({L"x.mp3", L"y.mp3"});
    duringCollecting([&] { choose(other.path()); });
    choose(large().path());
    ASSERT_TRUE(runUntil([&] { return explorer.searched == other.path() && isDone(); }));
    EXPECT_EQ(listed(), (Texts{L"x.mp3", L"y.mp3"}));
    EXPECT_EQ(window->lblpočet.text(), L"  2, z toho hudobné:   2");
}

TEST_F(Search, ClosingTheWindowOrTheProgramMeanwhileEndsItQuietly) {
    for (const bool all : {false, true}) {
        bool ended = false;
        duringCollecting([&] {
            if (all) StopRequested = -1;
            all ? Forms::unloadAll() : static_cast<void>(window->unload());
            ended = true;
        });
        choose(large().path());
        EXPECT_TRUE(runUntil([&] { return ended && !Forms::find(L"frmhladanie"); }));
        EXPECT_TRUE(person.seen.empty());
        if (!all) open();
    }
}

TEST_F(Search, CommandsReachTheirWindows) {
    folder.fill({L"a.mp3", L"b.pls"});
    scan(folder.path());
    ListView& list = window->Lview;
    const auto press = [&](int row, UINT down, UINT up) {
        clickAt(list, {30, static_cast<int>(list.rowHeight() * (row + 1.5))}, down, up);
    };
    person.closeMenus();
    press(1, WM_LBUTTONDOWN, WM_LBUTTONUP);
    EXPECT_EQ(window->lblbar.text(), folder / L"b.pls");
    press(1, WM_RBUTTONDOWN, WM_RBUTTONUP);
    EXPECT_TRUE(window->menu1.isEnabled(L"upravit_playlist"));
    window->menu1.choose(L"upravit_playlist");
    window->menu1.choose(L"info_o_subore");
    press(1, WM_LBUTTONDBLCLK, WM_LBUTTONUP);
    press(0, WM_RBUTTONDOWN, WM_RBUTTONUP);
    EXPECT_FALSE(window->menu1.isEnabled(L"upravit_playlist"));
    EXPECT_EQ(window->lblbar.text(), folder / L"a.mp3");
    window->menu1.choose(L"prehrat");
    list.focus();
    SendMessageW(window->handle(), WM_COMMAND, IDOK, 0);  // Enter
    const std::wstring a = folder / L"a.mp3", b = folder / L"b.pls";
    EXPECT_EQ(explorer.told,
              (Texts{L"edit:" + b, L"info:" + b, L"hraj:" + b, L"hraj:" + a, L"hraj:" + a}));
    window->menu1.choose(L"zostupne");
    EXPECT_EQ(listed(), (Texts{L"b.pls", L"a.mp3"}));
}

TEST_F(Search, ExportsInEachBranchOfItsQuestion) {
    folder.fill({L"a.mp3", L"b.m3u", L"č.asx"});
    scan(folder.path());
    const std::wstring a = folder / L"a.mp3", b = folder / L"b.m3u", c = folder / L"č.asx";
    const std::string all = toAnsi(a + L"\r\n" + b + L"\r\n" + c + L"\r\n");
    const std::string music = toAnsi(a + L"\r\n" + c + L"\r\n");
    const std::wstring question =
        L" Čo s playlistmi ?|Zoznam obsahuje aj playlisty, chceš ich pridať do novovytvoreného "
        L"playlistu ?";
    const std::wstring alone =
        L" Čo s playlistmi ?|Zoznam obsahuje len playlisty, chceš i napriek tomu zostaviť z nich "
        L"nový playlist ?";
    const auto done = [&](const wchar_t* name) {
        return L" Hotovo|Playlist '" + folder / name + L"' bol vytvorený.";
    };
    EXPECT_EQ(exported(L"", {}), Texts{});
    EXPECT_EQ(exported(L"one.m3u", {1, 1}), (Texts{question, done(L"one.m3u")}));
    EXPECT_EQ(contentOf(folder / L"one.m3u"), all);
    EXPECT_EQ(exported(L"two", {2, 1}), (Texts{question, done(L"two")}));
    EXPECT_EQ(contentOf(folder / L"two"), music);
    EXPECT_EQ(exported(L"three.txt", {0, 1}), (Texts{question, done(L"three.txt")}));
    EXPECT_EQ(contentOf(folder / L"three.txt"), music);

    const ScratchFolder lists;
    const std::wstring only = lists.file(L"b.m3u") + L"\r\n" + lists.file(L"č.asx") + L"\r\n";
    scan(lists.path());
    for (const int refusal : {2, 0}) EXPECT_EQ(exported(L"x.m3u", {refusal}), Texts{alone});
    EXPECT_FALSE(FileSystemObject::FileExists(lists / L"x.m3u"));
    EXPECT_EQ(exported(L"x.m3u", {1, 1}).size(), 2u);
    EXPECT_EQ(contentOf(lists / L"x.m3u"), toAnsi(only));
}

TEST_F(Search, AFailedExportLeavesTheOldFileAndSaysSo) {
    const std::wstring a = folder.file(L"a.mp3"), b = folder.file(L"b.mp3");
    const std::wstring old = folder / L"old.m3u.bak";
    scan(folder.path());
    folder.file(L"old.m3u.bak", "old");
    {
        const FileHandle lock = locked(old, FILE_SHARE_READ);
        EXPECT_EQ(
            exported(L"old.m3u.bak", {1}),
            Texts{L" CHYBA|Chyba č. 70: " + sentenceOf(ERROR_SHARING_VIOLATION) + L": " + old});
    }
    EXPECT_EQ(contentOf(old), "old");
    EXPECT_EQ(exported(L"old.m3u.bak", {1}),
              Texts{L" Hotovo|Playlist '" + old + L"' bol vytvorený."});
    EXPECT_EQ(contentOf(old), toAnsi(a + L"\r\n" + b + L"\r\n"));
    folder.fill({L"日本.mp3", L"sub\\"});
    scan(folder / L"sub\\..\\");
    EXPECT_NE(exported(L"new.m3u", {1}).at(0).find(L"日本.mp3"), std::wstring::npos);
    EXPECT_FALSE(FileSystemObject::FileExists(folder / L"new.m3u"));
}

}  // namespace
}  // namespace tunovka
