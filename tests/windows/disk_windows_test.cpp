// The editor and the explorer over disks that are slow, never answer or refuse to be looked at.
#include <gtest/gtest.h>

#include "support/disk_faults.h"
#include "support/editor_stage.h"
#include "support/file_menus.h"

namespace tunovka {
namespace {

template <class Stage>
class OverDisks : public Stage {
  protected:
    void deny(const std::wstring& ending) {
        disk.become([ending](DiskCall call, const std::wstring& path, DWORD&) {
            const bool refused = call == DiskCall::Attributes && path.ends_with(ending);
            return refused ? DWORD{ERROR_ACCESS_DENIED} : DWORD{ERROR_SUCCESS};
        });
    }

    // Carries a command out again and again, from the start. Each time another one of its questions
    // below the folder is not answered, from the first long one on, and the window closes
    // meanwhile. How many there were.
    int closesDuringEachQuestion(const std::function<Form&()>& start,
                                 const std::function<void()>& command, int pending = 0) {
        const std::wstring home = this->folder.bare();
        for (bool met = true; met; ++pending) {
            Form& window = start();
            Silence silence(home);
            std::atomic<int> left = pending;
            disk.become([&](DiskCall call, const std::wstring& path, DWORD&) {
                // A single question is one about a file's attributes.
                const bool isSingle = call == DiskCall::Attributes && !path.ends_with(L'\\');
                if (path.starts_with(home) && !isSingle && left-- == 0) silence.hold(path);
                return DWORD{ERROR_SUCCESS};
            });
            const When held([&] { return silence.held() > 0; }, [&] { window.unload(); }, 5);
            const DWORD asked = GetTickCount();
            command();
            EXPECT_LT(GetTickCount() - asked, 3000u) << pending;
            met = held.happened();
            EXPECT_TRUE(runUntil([&] { return window.isClosing() == met; })) << pending;
            silence.end();
            disk.become({});
        }
        return pending;
    }

    OddDisk disk;
    const std::wstring denied = errorDescription(kPermissionDenied);
};

class EditorOfDisks : public OverDisks<EditorStage> {};
class ExplorerOfDisks : public OverDisks<FileMenus> {};

TEST_F(EditorOfDisks, SaysThatAFileIsDeniedAndNeitherPlaysNorCallsItMissing) {
    open(L"a.mp3\r\nb.wav\r\nnone.mp3\r\n");
    deny(L"a.mp3");
    window->select(1);
    window->select(0);
    EXPECT_EQ(view().lblbar.text(), denied);
    for (const wchar_t* entry : {L"prehrat", L"info_o_subore"}) {
        expect({1});
        choose(entry);
        ASSERT_EQ(person.seen.size(), 1u) << entry;
        EXPECT_EQ(person.seen[0].text, denied);
    }
    EXPECT_TRUE(program.told.empty());
    window->select(2);
    choose(L"info_o_subore");
    EXPECT_EQ(program.told, Texts{L"info:chyba"});
}

TEST_F(ExplorerOfDisks, SaysThatAFileIsDeniedAndNotThatItIsMissing) {
    folder.file(L"a.mp3");
    folder.file(L"zoznam.m3u", "a.mp3\r\n");
    show(L"");
    deny(L"a.mp3");
    select(L"a.mp3");
    EXPECT_EQ(explorer->LblBar.text(), denied);
    select(Tview().firstChild(L"zoznam.m3u"));
    EXPECT_EQ(explorer->LblBar.text(), denied);
    person.answer({1});
    press(VK_RETURN);
    ASSERT_EQ(person.seen.size(), 1u);
    EXPECT_EQ(person.seen[0].text, denied);
}

TEST_F(EditorOfDisks, ClosesWhileAnyQuestionOfACommandIsPending) {
    folder.fill({L"d\\", L"d\\a.mp3", L"d\\b.mp3"});
    folder.file(L"more.m3u", "d\\b.mp3\r\na.mp3\r\n");
    const std::vector<std::pair<std::wstring, std::function<void()>>> commands{
        {L"load", [&] { window->txtodkaz.setText(folder / L"more.m3u"); }},
        {L"merge", [&] { drop(folder / L"more.m3u"); }},
        {L"invalid", [&] { choose(L"odstranit_neplatne_odkazy"); }},
        {L"duplicates", [&] { choose(L"odstranit_duplicitu"); }},
        {L"restore", [&] { choose(L"neradit"); }},
        {L"save", [&] { choose(L"ulozit_ako_plejlist"); }},
    };
    for (const auto& [name, command] : commands) {
        const auto start = [&]() -> Form& {
            // Folders that were written to a moment ago are asked again.
            for (const wchar_t* file : {L"new", L"d\\new"}) DeleteFileW(folder.file(file).c_str());
            open(L"d\\a.mp3\r\nb.wav\r\nnone.mp3\r\n");
            if (name == L"load") renew();
            person.saveAs({folder / L"saved.m3u"});
            expect({1, 1, 1});
            return *window;
        };
        SCOPED_TRACE(testing::PrintToString(name));
        EXPECT_GT(closesDuringEachQuestion(start, command), 1);
    }
}

TEST_F(ExplorerOfDisks, ClosesWhileAnyQuestionIsPending) {
    folder.fill({L"a\\", L"a\\b\\"});
    folder.file(L"zoznam.m3u", "a\\a.mp3\r\n");
    const auto start = [&]() -> Form& {
        explorer = std::make_unique<frmPrieskumnik>();
        show(L"");
        return *explorer;
    };
    const auto list = [&] { explorer->contents.ListFolderContents(folder.path()); };
    EXPECT_GT(closesDuringEachQuestion(start, list), 5);
    // Its first one, whether the folder has sub-folders, is a single question.
    const auto expand = [&] { explorer->folders.ExpandFolder(folder.path()); };
    EXPECT_GT(closesDuringEachQuestion(start, expand, 1), 2);
}

TEST_F(ExplorerOfDisks, OpensOneFolderAtATimeByTheStarKey) {
    folder.fill({L"a\\", L"a\\b\\"});
    show(L"");
    pressKey(strom(), VK_MULTIPLY);
    EXPECT_EQ(strom().firstChild(folder.path()), folder / L"a\\");
    EXPECT_EQ(strom().firstChild(folder / L"a\\"), folder / L"a\\_*.?");
}

TEST_F(ExplorerOfDisks, ExpandingDoesNotTakeTheFocusBackFromAnotherWindow) {
    folder.folder(L"a");
    show(L"");
    struct Other : Form {
        Other() : Form({.name = L"frmOther", .title = L"", .size = {100, 100}}) {}
    } other;
    disk.become([](DiskCall call, const std::wstring&, DWORD&) {
        if (call == DiskCall::Shell) Sleep(100);
        return DWORD{ERROR_SUCCESS};
    });
    strom().focus();
    const When expanding([&] { return !strom().isEnabled(); },
                         [&] { other.show(), SetFocus(nullptr); });
    explorer->folders.ExpandFolder(folder.path());
    EXPECT_TRUE(expanding.happened());
    EXPECT_FALSE(strom().hasFocus());
}

}  // namespace
}  // namespace tunovka
