// The explorer over disks that are slow, never answer or refuse to be looked at.
#include <gtest/gtest.h>

#include "support/disk_faults.h"
#include "support/file_menus.h"
#include "ui/form.h"

namespace tunovka {
namespace {

class ExplorerOfDisks : public FileMenus {
  protected:
    OddDisk disk;
};

TEST_F(ExplorerOfDisks, OpensOneFolderAtATimeByTheStarKey) {
    folder.folder(L"a");
    folder.folder(L"a\\b");
    show(L"");
    SendMessageW(strom().handle(), WM_KEYDOWN, VK_MULTIPLY, 0);
    EXPECT_EQ(strom().firstChild(folder.path()), folder / L"a\\");
    EXPECT_EQ(strom().firstChild(folder / L"a\\"), folder / L"a\\_*.?");
}

TEST_F(ExplorerOfDisks, SaysThatAFileIsDeniedAndNotThatItIsMissing) {
    folder.file(L"a.mp3");
    folder.file(L"zoznam.m3u", "a.mp3\r\n");
    show(L"");
    disk.become([](DiskCall call, const std::wstring& path, DWORD&) {
        const bool refused = call == DiskCall::Attributes && path.ends_with(L"a.mp3");
        return refused ? DWORD{ERROR_ACCESS_DENIED} : DWORD{ERROR_SUCCESS};
    });
    const std::wstring denied = errorDescription(kPermissionDenied);
    select(L"a.mp3");
    EXPECT_EQ(explorer->LblBar.text(), denied);
    select(Tview().firstChild(L"zoznam.m3u"));
    EXPECT_EQ(explorer->LblBar.text(), denied);
    person.answer({1});
    press(VK_RETURN);
    ASSERT_EQ(person.seen.size(), 1u);
    EXPECT_EQ(person.seen[0].text, denied);
}

// Each question of a command is the one during which the explorer closes.
TEST_F(ExplorerOfDisks, ClosesWhileAnyQuestionIsPending) {
    folder.folder(L"a");
    folder.folder(L"a\\b");
    folder.file(L"zoznam.m3u", "a\\a.mp3\r\n");
    const std::wstring home = folder.path().substr(0, folder.path().size() - 1);
    const auto questions = [&](int pending, const std::function<void()>& command) {
        for (bool met = true; met; ++pending) {
            met = false;
            explorer = std::make_unique<frmPrieskumnik>();
            show(L"");
            Silence silence(home);
            std::atomic<int> left = pending;
            disk.become([&](DiskCall, const std::wstring& path, DWORD&) {
                if (path.starts_with(home) && left-- == 0) silence.hold(path);
                return DWORD{ERROR_SUCCESS};
            });
            Timer timer;
            timer.onTick = [&] {
                if (silence.held() == 0 || explorer->isClosing()) return;
                met = true;
                explorer->unload();
            };
            timer.setInterval(5);
            const DWORD start = GetTickCount();
            command();
            EXPECT_LT(GetTickCount() - start, 3000u) << pending;
            timer.setInterval(0);
            silence.end();
            disk.become({});
        }
        return pending;
    };
    EXPECT_GT(questions(0, [&] { explorer->contents.ListFolderContents(folder.path()); }), 5);
    // Its first one, whether the folder has sub-folders, is a single question.
    EXPECT_GT(questions(1, [&] { explorer->folders.ExpandFolder(folder.path()); }), 2);
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
    Timer timer;
    timer.onTick = [&] {
        if (!strom().isEnabled()) other.show(), SetFocus(nullptr), timer.setInterval(0);
    };
    timer.setInterval(10);
    explorer->folders.ExpandFolder(folder.path());
    EXPECT_EQ(timer.interval(), 0u);
    EXPECT_FALSE(strom().hasFocus());
}

}  // namespace
}  // namespace tunovka
